#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// One of several parts of a tree of databases. Which part a database belongs to depends on its place below
/// the root alone: nobody needs a list of the others, and a new one moves none of them.
struct TreePart {
    std::uint64_t number = 0; ///< From 0 on.
    std::uint64_t count = 1;  ///< Of all parts.

    /// @param text "3/16" for the fourth of sixteen parts
    /// @throw UsageError
    static TreePart named(std::string const& text);

    /// Reads how many parts there are.
    /// @param option that has the number, for the error
    /// @throw UsageError
    static std::uint64_t countIn(std::string const& option, std::string const& text);

    /// Whether a database belongs to this part. @param place below the root: "north/tile_7.flt"
    bool holds(std::string_view place) const { return numberOf(place, count) == number; }

    /// The part that a database belongs to.
    static std::uint64_t numberOf(std::string_view place, std::uint64_t count) { return hash(place) % count; }

    /// 64-bit FNV-1a over the bytes, mixed once more so that every bit of it counts for small numbers of
    /// parts. It never changes: the parts of a tree are the same in all versions.
    static std::uint64_t hash(std::string_view place);

    /// "3/16"
    std::string name() const { return std::to_string(number) + "/" + std::to_string(count); }
};
