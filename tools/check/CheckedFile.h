#pragma once

#include "inspect/FltFinding.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// How many findings there are of each severity.
struct FindingCounts {
    std::uint64_t errors = 0;
    std::uint64_t warnings = 0;
    std::uint64_t notes = 0;

    FindingCounts& operator+=(FindingCounts const& other);
};

/// What a check found in one file.
struct CheckedFile {
    std::string file;
    std::string problem; ///< Why it can't be read; empty if it can.
    std::vector<FltFinding> findings;
    std::map<int, std::uint64_t> leftOut; ///< How many more findings there are, by the number of their kind.

    FindingCounts counts() const;

    /// "error"
    static std::string nameOf(FltFindingKind::Severity severity);
};
