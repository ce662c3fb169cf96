#pragma once

#include "check/CheckedFile.h"
#include "support/Colours.h"

#include <cstddef>
#include <string>

/// Findings as text: a line each, and a summary of each file.
class CheckText
{
public:
    /// @param isQuiet leaves out all but errors
    CheckText(Colours colours, bool isQuiet) : colours(colours), isQuiet(isQuiet) {}

    std::string of(CheckedFile const& checked) const;

    /// The end of a report about several files; empty if only errors are wanted.
    /// @param files      those that were read
    /// @param unreadable those that couldn't be
    std::string totalOf(FindingCounts const& counts, std::size_t files, std::size_t unreadable) const;

    /// The page of a kind: what, why it matters, how to mend it.
    static std::string pageOf(FltFindingKind const& kind);

    /// All kinds, a line each.
    std::string table() const;

private:
    std::string lineOf(FltFinding const& finding) const;
    std::string summaryOf(FindingCounts const& counts) const;
    std::string inColour(FltFindingKind::Severity severity) const;

    Colours colours;
    bool isQuiet;
};
