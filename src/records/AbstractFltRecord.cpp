#include "records/AbstractFltRecord.h"

#include "dump/FltDump.h"

std::ostream& AbstractFltRecord::opcodeAndLength(std::ostream& os) const
{
    FltRecordCategory const category = getCategory();
    FltDump dump(os);
    if (category != FltRecordCategory::unknown)
        dump << "  (" << nameOf(category) << ")";
    else
        dump << "  (" << getRecordCategory() << ")";
    dump.endLine();
    dump << "-- Opcode: " << getOpcode() << "  Length: " << getLength() << " --";
    dump.endLine();
    return os;
}

std::ostream& AbstractFltRecord::titleOpcodeAndLength(std::ostream& os, std::string_view title) const
{
    (FltDump(os) << title).endLine();
    return opcodeAndLength(os);
}
