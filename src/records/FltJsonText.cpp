#include "records/FltJsonText.h"

#include "messages/FltText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

namespace
{

using Json = nlohmann::json;

bool isPlain(char character)
{
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

/// The same of eight characters at once.
bool arePlain(std::uint64_t eight)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t tops = 0x80 * ones;
    auto const have = [&](char character) {
        std::uint64_t const others = eight ^ static_cast<unsigned char>(character) * ones;
        return (others - ones) & ~others;
    };
    std::uint64_t const below = eight - ' ' * ones; // a borrow comes from one that is below itself
    std::uint64_t const above = eight | (eight + ('\x7f' - '~') * ones);
    return ((below | above | have('"') | have('\\')) & tops) == 0;
}

bool isPlain(std::string_view text)
{
    std::uint64_t eight = 0;
    for (; text.size() >= sizeof eight; text.remove_prefix(sizeof eight)) {
        std::memcpy(&eight, text.data(), sizeof eight);
        if (!arePlain(eight))
            return false;
    }
    for (char const character : text)
        if (!isPlain(character))
            return false;
    return true;
}

constexpr std::size_t firstRoom = 4096;

/// Whole numbers up to here are floats, and are written as they are.
constexpr float lastWholeFloat = 1 << 24;

/// Whole doubles below have a point, and larger ones an exponent.
constexpr double lowestWithExponent = 1e15;

} // namespace

void FltJsonText::grow(std::size_t size)
{
    std::size_t const there = used();
    std::size_t const wanted = std::max({firstRoom, 2 * there, there + size});
    std::unique_ptr<char[]> larger(new char[wanted]);
    std::copy(begin.get(), at, larger.get());
    begin = std::move(larger);
    at = begin.get() + there;
    limit = begin.get() + wanted;
}

void FltJsonText::writeInteger(std::int64_t number)
{
    at = std::to_chars(at, limit, number).ptr;
}

void FltJsonText::writeWhole(std::int64_t number)
{
    makeRoom(longestNumber);
    writeInteger(number);
    append(".0,", 3);
}

/// Most floats are small whole numbers.
void FltJsonText::real(float number)
{
    if (std::abs(number) <= lastWholeFloat) {
        auto const whole = static_cast<std::int32_t>(number);
        if (static_cast<float>(whole) == number && (whole != 0 || !std::signbit(number)))
            return writeWhole(whole);
    }
    real(std::isfinite(number) ? shortest(number) : static_cast<double>(number));
}

void FltJsonText::real(double number)
{
    if (std::isnan(number))
        return text("NaN");
    if (std::isinf(number))
        return text(number < 0 ? "-Infinity" : "Infinity");
    makeRoom(longestNumber);
    if (std::abs(number) < lowestWithExponent) {
        auto const whole = static_cast<std::int64_t>(number);
        if (static_cast<double>(whole) == number && (whole != 0 || !std::signbit(number)))
            return writeWhole(whole);
    }
    at = nlohmann::detail::to_chars(at, limit, number);
    *at++ = ',';
}

void FltJsonText::text(std::string_view characters)
{
    if (!isPlain(characters))
        return writeEscaped(characters);
    makeRoom(characters.size() + 3);
    *at++ = '"';
    append(characters.data(), characters.size());
    append("\",", 2);
}

void FltJsonText::writeEscaped(std::string_view characters)
{
    Json const json(characters);
    std::string const escaped =
        FltText::printableJson(json.dump(-1, ' ', false, Json::error_handler_t::replace));
    makeRoom(escaped.size() + 1);
    append(escaped.data(), escaped.size());
    *at++ = ',';
}

void FltJsonText::bytes(std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    makeRoom(2 * bytes.size() + 3);
    *at++ = '"';
    for (char const byte : bytes) {
        *at++ = digits[static_cast<unsigned char>(byte) >> 4];
        *at++ = digits[static_cast<unsigned char>(byte) & 15];
    }
    append("\",", 2);
}

/// Takes the bracket and the comma behind it back.
void FltJsonText::resumeArray()
{
    at -= 2;
    if (at[-1] != '[')
        *at++ = ',';
}

/// Moves what stands from a place on by so many characters.
/// @return the gap
char* FltJsonText::insert(std::size_t place, std::size_t size)
{
    makeRoom(size);
    char* const gap = begin.get() + place;
    std::memmove(gap + size, gap, static_cast<std::size_t>(at - gap));
    at += size;
    return gap;
}

/// Flags may be named when further members are there already: their value stays where it is, and becomes an
/// object.
/// @return false if there are no flags
bool FltJsonText::nameFlags()
{
    if (last.end == 0)
        return false;
    constexpr std::string_view head = "{\"word\":";
    *insert(last.end, 1) = '}';
    std::memcpy(insert(last.begin, head.size()), head.data(), head.size());
    last = {last.begin, last.end + head.size() + 1, true};
    return true;
}
