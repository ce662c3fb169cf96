#include "check/CheckedFile.h"

std::uint64_t CheckedFile::count(FltFindingKind::Severity severity) const
{
    std::uint64_t sum = 0;
    for (FltFinding const& finding : findings)
        sum += finding.kind->severity == severity ? 1 : 0;
    for (auto const& [number, more] : leftOut)
        sum += FltFindingTable::of(number).severity == severity ? more : 0;
    return sum;
}

std::string CheckedFile::nameOf(FltFindingKind::Severity severity)
{
    return severity == FltFindingKind::Severity::error     ? "error"
           : severity == FltFindingKind::Severity::warning ? "warning"
                                                           : "note";
}
