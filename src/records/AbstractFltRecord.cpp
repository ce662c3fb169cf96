#include "records/AbstractFltRecord.h"

#include "dump/FltDump.h"

std::ostream& AbstractFltRecord::opcodeAndLength(std::ostream& os) const
{
    FltDump::frame(os, getRecordCategory(), getOpcode(), getLength());
    return os;
}

std::ostream& AbstractFltRecord::titleOpcodeAndLength(std::ostream& os, std::string_view title) const
{
    FltDump::line(os, title);
    return opcodeAndLength(os);
}
