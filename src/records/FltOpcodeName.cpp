#include "records/FltOpcodeName.h"

#include "records/FltOpcodeTable.h"

namespace
{

std::string_view nameOf(int opcode)
{
    FltOpcodeRow const* const row = FltOpcodeTable::find(opcode);
    return row != nullptr ? row->name : std::string_view();
}

} // namespace

std::string FltOpcodeName::of(int opcode)
{
    std::string_view const name = nameOf(opcode);
    return name.empty() ? "record " + std::to_string(opcode) : std::string(name);
}

bool FltOpcodeName::isKnown(int opcode)
{
    return !nameOf(opcode).empty();
}
