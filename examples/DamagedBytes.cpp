#include "DamagedBytes.h"

#include <algorithm>
#include <cstddef>

namespace
{

constexpr std::size_t lengthAt = 2; ///< In a record, behind its opcode.

std::size_t lengthOfRecord(std::string const& database, std::size_t begin)
{
    auto const byte = [&](std::size_t at) { return static_cast<unsigned char>(database[begin + at]); };
    return static_cast<std::size_t>(byte(lengthAt)) << 8 | byte(lengthAt + 1);
}

/// Where the first record behind the middle begins.
std::size_t middleRecord(std::string const& database)
{
    std::size_t begin = 0;
    while (begin < database.size() / 2)
        begin += std::max<std::size_t>(lengthOfRecord(database, begin), lengthAt + 2);
    return begin;
}

} // namespace

std::string damagedBytes(std::string const& database, Damage damage)
{
    std::string bytes = database;
    switch (damage) {
    case Damage::cut:
        return bytes.substr(0, bytes.size() / 2);
    case Damage::zeroLength:
        return bytes.replace(middleRecord(bytes) + lengthAt, 2, 2, '\0');
    case Damage::text:
        return "404 Not Found\n";
    case Damage::empty:
        break;
    }
    return "";
}
