#include "check/CheckedFile.h"

FindingCounts& FindingCounts::operator+=(FindingCounts const& other)
{
    errors += other.errors;
    warnings += other.warnings;
    notes += other.notes;
    return *this;
}

FindingCounts CheckedFile::counts() const
{
    using Severity = FltFindingKind::Severity;
    FindingCounts counts;
    auto const add = [&counts](Severity severity, std::uint64_t number) {
        (severity == Severity::error     ? counts.errors
         : severity == Severity::warning ? counts.warnings
                                         : counts.notes) += number;
    };
    for (FltFinding const& finding : findings)
        add(finding.kind->severity, 1);
    for (auto const& [number, more] : leftOut)
        add(FltFindingTable::of(number).severity, more);
    return counts;
}

std::string CheckedFile::nameOf(FltFindingKind::Severity severity)
{
    return severity == FltFindingKind::Severity::error     ? "error"
           : severity == FltFindingKind::Severity::warning ? "warning"
                                                           : "note";
}
