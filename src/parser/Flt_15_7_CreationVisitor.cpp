#include "parser/Flt_15_7_CreationVisitor.h"

#include "dump/FltDumpOutput.h"
#include "parser/FltRawData.h"
#include "records/FltOpcode.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <cstdint>
#include <memory>

FltRecord* Flt_15_7_CreationVisitor::previous = nullptr;

void Flt_15_7_CreationVisitor::visitFltRawData(FltRecord*& result, FltRawData const* raw)
{
    FltRecordRow const* const row = FltRecordTable::find(raw->opcode);
    std::unique_ptr<FltRecord> made; // a decoder may throw
    if (row == nullptr)
        made.reset(new FltRecordUnknown(static_cast<std::int16_t>(raw->opcode), raw->length));
    else if (row->opcode != FltOpcode::soundPalette || previous == nullptr ||
             previous->getOpcode() != FltOpcode::soundPalette)
        made.reset(row->make(raw->length, revision));
    FltRecord* const record = made != nullptr ? made.get() : previous;
    record->getPropertiesFromData(raw->data);
    static_cast<void>(made.release());
    result = record;
    previous = result;
    if (std::ostream* const dump = FltDumpOutput::current())
        result->properties(*dump);
}

std::size_t Flt_15_7_CreationVisitor::getReach(int opcode, unsigned int length) const
{
    return FltRecordTable::reachOf(opcode, length, revision);
}

void Flt_15_7_CreationVisitor::forgetPrevious()
{
    previous = nullptr;
}
