#pragma once

#include "inspect/FltFinding.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// What a check found in one file.
struct CheckedFile {
    std::string file;
    std::string problem; ///< Why it can't be read; empty if it can.
    std::vector<FltFinding> findings;
    std::map<int, std::uint64_t> leftOut; ///< How many more findings there are, by the number of their kind.

    std::uint64_t count(FltFindingKind::Severity severity) const;

    /// "error"
    static std::string nameOf(FltFindingKind::Severity severity);
};
