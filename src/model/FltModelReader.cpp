#include "model/FltModelReader.h"

#include "records/FltOpcodeName.h"
#include "records/FltOpcodeTable.h"
#include "records/FltRevision.h"
#include "records/FltUnits.h"

using Part = FltOpcodeRow::Part;

namespace
{

/// Records between two calls of the progress function.
constexpr int recordsPerCall = 4096;

void readHeader(FltModel& model, FltRecordView const& header)
{
    auto const record = std::make_shared<FltDecoded<FltRecordHeader>>(header);
    model.header = record;
    model.revision = record->formatRevisionLevel;
    model.metresPerUnit = FltModelReader::metresPerUnit(*record);
}

/// Why a record isn't shown; null if it is.
char const* absenceIn(FltModelTree::Place place)
{
    switch (place) {
    case FltModelTree::Place::leftOut:
        return "record in an extension or too deep a level";
    case FltModelTree::Place::nowhere:
        return "record that belongs to no node";
    case FltModelTree::Place::taken:
        break;
    }
    return nullptr;
}

} // namespace

double FltModelReader::metresPerUnit(FltRecordHeader const& header)
{
    double scale = FltUnits::metresIn(header.vertexCoordinateUnits);
    int const multiplier = header.multiplierDiviserUnit;
    if (header.formatRevisionLevel <= FltRevision::lastWithMultiplier && multiplier != 0)
        scale = multiplier < 0 ? scale / -multiplier : scale * multiplier;
    return scale;
}

void FltModelReader::read(FltModel& model, FltLeftOut& leftOut, Progress const& progress)
{
    FltRecordView record;
    bool isFirst = true;
    for (int untilCall = 0; model.reader.next(record); --untilCall) {
        if (untilCall <= 0) {
            progress(model.reader.getPosition());
            untilCall = recordsPerCall;
        }
        if (isFirst && record.opcode == FltOpcode::header)
            readHeader(model, record);
        isFirst = false;
        ++model.records;
        switch (FltOpcodeTable::partOf(static_cast<int>(record.opcode))) {
        case Part::vertex:
            model.vertices.addPaletteVertex(record, model.palettes.colors, model.revision);
            break;
        case Part::palette:
            if (record.opcode == FltOpcode::vertexPalette)
                model.vertices.beginPalette(record);
            else if (!model.palettes.take(record, model.revision) &&
                     !FltOpcodeTable::isSilent(static_cast<int>(record.opcode)))
                ++leftOut[FltOpcodeName::of(static_cast<int>(record.opcode))];
            break;
        default:
            if (char const* const why = absenceIn(model.tree.add(record)))
                ++leftOut[why];
            break;
        }
    }
}
