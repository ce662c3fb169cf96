#include "records/AbstractFltRecord.h"

#include "dump/FltDump.h"

#include <cstdint>

std::ostream& AbstractFltRecord::opcodeAndLength(std::ostream& os) const
{
    FltDump dump(os);
    writeOpcodeAndLength(dump);
    return os;
}

std::ostream& AbstractFltRecord::titleOpcodeAndLength(std::ostream& os, std::string_view title) const
{
    FltDump dump(os);
    writeHead(dump, title);
    return os;
}

void AbstractFltRecord::writeHead(FltDump& dump, std::string_view title) const
{
    dump.lineOf(title);
    writeOpcodeAndLength(dump);
}

void AbstractFltRecord::writeOpcodeAndLength(FltDump& dump) const
{
    FltRecordCategory const category = getCategory();
    if (category != FltRecordCategory::unknown)
        dump.lineOf(std::string_view("  ("), nameOf(category), std::string_view(")"));
    else
        dump.lineOf(std::string_view("  ("), std::string_view(getRecordCategory()), std::string_view(")"));
    dump.lineOf(std::string_view("-- Opcode: "), std::int32_t(getOpcode()), std::string_view("  Length: "),
                std::uint32_t(getLength()), std::string_view(" --"));
}
