#pragma once

#include "convert/ConversionFacts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One line of a report: what became of a database.
struct ReportLine {
    std::string input;              ///< Its place below the root.
    std::string output;             ///< Where the result is, below the output's directory.
    int exitCode = 0;               ///< As of a program that converts it alone.
    std::string problem;            ///< Why there is no result; a sentence.
    std::uint64_t bytesRead = 0;    ///< The size of the database.
    std::uint64_t bytesWritten = 0; ///< The size of the result.
    std::vector<std::string> names; ///< The results of other databases that this one names.
    ConversionFacts facts;

    /// In one line, with its end.
    std::string text() const;

    /// Reads a line. @return nothing if it isn't whole
    static std::optional<ReportLine> from(std::string_view text);
};
