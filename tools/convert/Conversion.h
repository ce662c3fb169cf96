#pragma once

#include "convert/ConversionFacts.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

/// One database and the file that it becomes.
struct Conversion {
    std::string input;
    std::string output; ///< "-" is standard output.

    /// For references that are named: the converted file of each database that may be named, by the
    /// database's canonical path.
    std::unordered_map<std::string, std::string> referenceOutputs;
};

/// What a conversion made, in numbers.
struct ConversionStatistics {
    std::uint64_t nodes = 0;
    std::uint64_t faces = 0;
    std::uint64_t triangles = 0;
    std::uint64_t textures = 0; ///< Those that were found.
    std::uint64_t bytesIn = 0;  ///< Of the database without those that it refers to.
    std::uint64_t bytesOut = 0;
    double seconds = 0;

    ConversionStatistics& operator+=(ConversionStatistics const& other);

    /// As numbers in text, to send them to another process.
    std::vector<std::string> fields() const;
    static ConversionStatistics fromFields(std::vector<std::string> const& fields);

    /// The head of a table of statistics, and a line of it, each without the end of the line.
    static std::string tableHead();
    std::string tableLine(std::string const& name) const;
};

/// What a conversion made.
struct ConversionResult {
    ConversionStatistics statistics;
    ConversionFacts facts; ///< Empty unless they are asked for.
};
