#include "parser/Flt_15_7_CreationVisitor.h"

#include "parser/FltRawData.h"
#include "records/FltRecordComment.h"
#include "records/FltRecordControl.h"
#include "records/FltRecordExtensionAttribute.h"
#include "records/FltRecordEyePointTrackPlane.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordLongID.h"
#include "records/FltRecordSound.h"
#include "records/FltRecordText.h"
#include "records/FltRecordTextureMapping.h"
#include "records/FltRecordUnknown.h"

#include <array>
#include <cstdint>
#include <iostream>

namespace
{

using Maker = FltRecord* (*)(unsigned int length, int revision);

template <class Record>
FltRecord* plain(unsigned int length, int /*revision*/)
{
    return new Record(length);
}

/// For the classes whose layout depends on the revision: they need it before they decode.
template <class Record>
FltRecord* revised(unsigned int length, int revision)
{
    auto* const record = new Record(length);
    record->revision = revision;
    return record;
}

/// How one opcode is read.
struct Row {
    int opcode;
    Maker make;
    int reach; ///< Bytes that the decoder reads at its longest whatever the record's length says.
};

constexpr int lastOpcode = 114;
constexpr int soundPaletteOpcode = 93;

constexpr Row rows[] = {
    {1, plain<FltRecordHeader>, 324},
    {10, plain<FltRecordPushLevel>, 4},
    {11, plain<FltRecordPopLevel>, 4},
    {19, plain<FltRecordPushSubface>, 4},
    {20, plain<FltRecordPopSubface>, 4},
    {21, plain<FltRecordPushExtension>, 24},
    {22, plain<FltRecordPopExtension>, 24},
    {31, plain<FltRecordComment>, 4},
    {33, plain<FltRecordLongID>, 4},
    {61, plain<FltRecordInstanceReference>, 8},
    {62, plain<FltRecordInstanceDefinition>, 8},
    {83, plain<FltRecordEyePointTrackPlane>, 280},
    {91, plain<FltRecordSound>, 88},
    {93, plain<FltRecordSoundPalette>, 32},
    {95, plain<FltRecordText>, 320},
    {100, plain<FltRecordExtensionAttribute>, 24},
    {112, plain<FltRecordTextureMappingPalette>, 580},
};

constexpr bool isAscending()
{
    int before = 0;
    for (Row const& row : rows) {
        if (row.opcode <= before || row.opcode > lastOpcode || row.reach < 4)
            return false;
        before = row.opcode;
    }
    return true;
}
static_assert(isAscending(), "the rows stand in the order of their opcodes, each once, none above the last");

/// The row of each opcode, or -1.
constexpr std::array<std::int8_t, lastOpcode + 1> makeIndex()
{
    std::array<std::int8_t, lastOpcode + 1> index{};
    for (std::int8_t& entry : index)
        entry = -1;
    std::int8_t position = 0;
    for (Row const& row : rows)
        index[static_cast<std::size_t>(row.opcode)] = position++;
    return index;
}
constexpr auto index = makeIndex();

Row const* findRow(int opcode)
{
    if (opcode < 0 || opcode > lastOpcode || index[static_cast<std::size_t>(opcode)] < 0)
        return nullptr;
    return &rows[index[static_cast<std::size_t>(opcode)]];
}

} // namespace

FltRecord* Flt_15_7_CreationVisitor::previous = nullptr;

void Flt_15_7_CreationVisitor::visitFltRawData(FltRecord*& result, FltRawData const* raw)
{
    Row const* const row = findRow(raw->opcode);
    if (row == nullptr)
        result = new FltRecordUnknown(static_cast<std::int16_t>(raw->opcode), raw->length);
    else if (row->opcode == soundPaletteOpcode && previous != nullptr &&
             previous->getOpcode() == soundPaletteOpcode)
        result = previous;
    else
        result = row->make(raw->length, revision);
    result->getPropertiesFromData(raw->data);
    previous = result;
    result->properties(std::cout);
}

std::size_t Flt_15_7_CreationVisitor::getReach(int opcode, unsigned int length) const
{
    Row const* const row = findRow(opcode);
    if (row == nullptr)
        return length;
    return static_cast<std::size_t>(row->reach);
}

void Flt_15_7_CreationVisitor::forgetPrevious()
{
    previous = nullptr;
}
