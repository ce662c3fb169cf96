#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// The records that a well-formed database is made of.
std::vector<std::string> recordsOf(std::string const& database);

/// All small changes to a part of a database, one after the other: it is cut at each byte, each byte is
/// counted up and down, cleared and filled, each bit is flipped, the length of each record and each 32-bit
/// word in it take values at their limits.
class Mutations
{
public:
    /// @param database well-formed; the part between @p begin and @p end is made of whole records
    Mutations(std::string const& database, std::size_t begin, std::size_t end);

    /// How many there are.
    std::size_t size() const { return starts.back(); }

    /// One of them; it may equal the database.
    std::string operator[](std::size_t index) const;

    /// What it changes, for a person.
    std::string describe(std::size_t index) const;

private:
    enum Kind : std::size_t { cut, byteValue, bit, recordLength, word, kinds };

    struct Change {
        Kind kind;
        std::size_t at;    ///< Byte offset in the database.
        std::size_t which; ///< Of the values that the kind has.
    };
    Change changeAt(std::size_t index) const;

    std::string const& database;
    std::size_t begin;
    std::vector<std::size_t> records; ///< Where those of the part begin.
    std::vector<std::size_t> words;   ///< Where their words begin.
    std::array<std::size_t, kinds + 1> starts{};
};
