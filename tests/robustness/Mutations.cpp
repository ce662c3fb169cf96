#include "robustness/Mutations.h"

#include "records/FltUtils.h"

#include <algorithm>
#include <cstdint>

namespace
{

constexpr std::size_t byteValues = 4;
constexpr std::size_t bitsInAByte = 8;
constexpr std::uint32_t limits[] = {0,          1,          0x7ffffffe, 0x7fffffff,
                                    0x80000000, 0x80000001, 0xfffffffe, 0xffffffff};
constexpr std::size_t recordLengths = 10;

void setByte(std::string& bytes, std::size_t at, unsigned value)
{
    bytes[at] = static_cast<char>(static_cast<unsigned char>(value & 0xffU));
}

unsigned valueOf(unsigned char byte, std::size_t which)
{
    unsigned const values[byteValues] = {byte + 1U, byte - 1U, 0, 0xff};
    return values[which];
}

unsigned lengthOf(unsigned length, std::size_t which)
{
    unsigned const lengths[recordLengths] = {0,          1,          2,          3,      4,
                                             length - 4, length - 1, length + 1, 0x7fff, 0xffff};
    return lengths[which];
}

} // namespace

std::vector<std::string> recordsOf(std::string const& database)
{
    std::vector<std::string> records;
    for (std::size_t offset = 0; offset < database.size(); offset += records.back().size())
        records.push_back(database.substr(offset, FltUtils::word16At(database.data() + offset + 2)));
    return records;
}

Mutations::Mutations(std::string const& database, std::size_t begin, std::size_t end)
    : database(database), begin(begin)
{
    for (std::size_t at = begin; at < end;) {
        std::size_t const length = std::max<std::size_t>(FltUtils::word16At(database.data() + at + 2), 4);
        records.push_back(at);
        for (std::size_t offset = 4; offset + 4 <= length; offset += 4)
            words.push_back(at + offset);
        at += length;
    }
    std::size_t const bytes = end - begin;
    std::size_t const counts[kinds] = {bytes, bytes * byteValues, bytes * bitsInAByte,
                                       records.size() * recordLengths, words.size() * std::size(limits)};
    for (std::size_t kind = 0; kind < kinds; ++kind)
        starts[kind + 1] = starts[kind] + counts[kind];
}

Mutations::Change Mutations::changeAt(std::size_t index) const
{
    auto const* const next = std::upper_bound(starts.begin(), starts.end(), index);
    auto const kind = static_cast<Kind>(next - starts.begin() - 1);
    std::size_t const number = index - starts[kind];
    switch (kind) {
    case byteValue:
        return {kind, begin + number / byteValues, number % byteValues};
    case bit:
        return {kind, begin + number / bitsInAByte, number % bitsInAByte};
    case recordLength:
        return {kind, records[number / recordLengths], number % recordLengths};
    case word:
        return {kind, words[number / std::size(limits)], number % std::size(limits)};
    default:
        return {cut, begin + number, 0};
    }
}

std::string Mutations::operator[](std::size_t index) const
{
    Change const change = changeAt(index);
    std::string bytes = database;
    auto const old = static_cast<unsigned char>(bytes[change.at]);
    switch (change.kind) {
    case byteValue:
        setByte(bytes, change.at, valueOf(old, change.which));
        break;
    case bit:
        setByte(bytes, change.at, old ^ (1U << change.which));
        break;
    case recordLength: {
        unsigned const length = lengthOf(FltUtils::word16At(bytes.data() + change.at + 2), change.which);
        setByte(bytes, change.at + 2, length >> 8);
        setByte(bytes, change.at + 3, length);
        break;
    }
    case word:
        for (unsigned byte = 0; byte < 4; ++byte)
            setByte(bytes, change.at + byte, limits[change.which] >> (24 - 8 * byte));
        break;
    default:
        bytes.resize(change.at);
    }
    return bytes;
}

std::string Mutations::describe(std::size_t index) const
{
    static char const* const names[kinds] = {"cut", "byte changed", "bit flipped", "record's length changed",
                                             "word changed"};
    Change const change = changeAt(index);
    return std::string(names[change.kind]) + " at byte " + std::to_string(change.at) + ", way " +
           std::to_string(change.which);
}
