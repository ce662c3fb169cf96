#include "loader/FltOmissionKinds.h"

#include "records/FltOpcodeTable.h"

#include <string>

namespace
{

/// What a scene lacks for the records of an opcode; empty if nothing.
std::string absenceOf(int opcode)
{
    FltOpcodeRow const* const row = FltOpcodeTable::find(opcode);
    std::string kind(row != nullptr ? row->absence : FltOpcodeTable::recordsOfOpcode);
    return kind == FltOpcodeTable::recordsOfOpcode ? kind + std::to_string(opcode) : kind;
}

} // namespace

std::vector<FltOmission> FltOmissionKinds::ofExactConversion(std::map<int, std::uint64_t> const& records)
{
    std::map<std::string, std::uint64_t> kinds;
    for (auto const& [opcode, count] : records)
        if (std::string kind = absenceOf(opcode); !kind.empty())
            kinds[std::move(kind)] += count;
    std::vector<FltOmission> omissions;
    omissions.reserve(kinds.size());
    for (auto const& [kind, count] : kinds)
        omissions.push_back({kind, count});
    return omissions;
}
