#pragma once

#include "convert/ConversionPlan.h"

#include <cstdint>
#include <string>
#include <vector>

/// How evenly a tree of databases falls into parts.
class PartSizes
{
public:
    /// @param entries of the whole tree
    /// @param parts   how many there are, at least 1
    PartSizes(std::vector<ConversionPlan::Entry> const& entries, std::uint64_t parts);

    /// A table for people, with what to do if the parts are too small or too uneven.
    std::string text() const;

    /// How many databases the largest part has for one of a part of mean size; 0 if there are none.
    double largestToMean() const;

private:
    struct Sizes {
        std::uint64_t least = 0, most = 0, all = 0;
        double mean = 0;
    };

    static Sizes sizesOf(std::vector<std::uint64_t> const& parts);

    std::uint64_t count;
    Sizes files;
    Sizes bytes;
    ConversionPlan::Entry largest; ///< The largest database.
};
