#pragma once

#include "check/CheckedFile.h"
#include "support/Colours.h"

/// Findings as text: a line each, and a summary of each file.
class CheckText
{
public:
    /// @param isQuiet leaves out all but errors
    CheckText(Colours colours, bool isQuiet) : colours(colours), isQuiet(isQuiet) {}

    std::string of(CheckedFile const& checked) const;

    /// The page of a kind: what, why it matters, how to mend it.
    static std::string pageOf(FltFindingKind const& kind);

    /// All kinds, a line each.
    std::string table() const;

private:
    std::string lineOf(FltFinding const& finding) const;
    std::string summaryOf(CheckedFile const& checked) const;
    std::string inColour(FltFindingKind::Severity severity) const;

    Colours colours;
    bool isQuiet;
};
