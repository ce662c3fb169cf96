#include "dump/FltNumberText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <endian.h>

namespace
{

constexpr int digitCount = 6;
constexpr double lowestScaled = 1e5;
constexpr double beyondScaled = 1e6;
constexpr std::uint32_t beyondEightDigits = 100'000'000;

/// All are exact.
constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                  1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int highestPower = 22;

/// A product or quotient below a million differs from the exact one by at most 2^-34, half its last place. A
/// fraction farther than this from one half is rounded as the exact one would be.
constexpr double safety = 1e-10;

/// @p value times ten to the @p power, rounded once.
double scaledBy(double value, int power)
{
    return power >= 0 ? value * powersOfTen[power] : value / powersOfTen[-power];
}

/// Numbers with these exponents are scaled by a power that stands in the table, whether the exponent is right
/// or one too low.
constexpr int lowestExponent = digitCount - 1 - highestPower;
constexpr int highestExponent = digitCount - 2 + highestPower;

/// Eight characters as a word, the first one lowest: writing them is one step, and so is cutting some off.
using Eight = std::uint64_t;

constexpr Eight eightZeros = 0x3030303030303030;
constexpr Eight zeroPointZeros = 0x3030303030302e30; // "0.000000"

void put(char* at, Eight characters)
{
    Eight const inOrder = htole64(characters);
    std::memcpy(at, &inOrder, sizeof inOrder);
}

/// All numbers of two digits, the first digit lowest.
struct Pairs {
    std::uint16_t of[100] = {};
    constexpr Pairs()
    {
        for (int number = 0; number < 100; ++number)
            of[number] = static_cast<std::uint16_t>(('0' + number / 10) | ('0' + number % 10) << 8);
    }
};
constexpr Pairs pairs;

/// The digits of a number below ten thousand.
Eight fourDigits(std::uint32_t number)
{
    std::uint32_t const high = number / 100;
    return Eight(pairs.of[high]) | Eight(pairs.of[number - high * 100]) << 16;
}

/// The digits of a number below a million, with two zeros behind them.
Eight sixDigits(std::uint32_t number)
{
    std::uint32_t const high = number / 10000;
    return Eight(pairs.of[high]) | fourDigits(number - high * 10000) << 16 | (eightZeros & ~Eight(0) << 48);
}

/// The digits of a number below a hundred million, with zeros before them.
Eight eightDigits(std::uint32_t number)
{
    std::uint32_t const high = number / 10000;
    return fourDigits(high) | fourDigits(number - high * 10000) << 32;
}

/// How many digits are left when zeros at the end are cut off.
int countOf(Eight digits)
{
    return static_cast<int>(8 - static_cast<unsigned>(__builtin_clzll(digits ^ eightZeros)) / 8);
}

char* writeExactly(char* at, double value)
{
    return std::to_chars(at, at + FltNumberText::longest, value, std::chars_format::general, digitCount).ptr;
}

/// d.ddd and dddddd. @param exponent that of the first digit, from 0 to 5
char* writeFixed(char* at, Eight digits, int count, int exponent)
{
    int const whole = exponent + 1;
    put(at, digits);
    if (count <= whole)
        return at + whole;
    at[whole] = '.';
    put(at + whole + 1, digits >> (8 * whole));
    return at + count + 1;
}

/// 0.ddd to 0.000ddd. @param exponent that of the first digit, from -4 to -1
char* writeBelowOne(char* at, Eight digits, int count, int exponent)
{
    put(at, zeroPointZeros);
    at += 1 - exponent;
    put(at, digits);
    return at + count;
}

/// d.ddde-05 and the like. @param exponent of at most two digits
char* writeScientific(char* at, Eight digits, int count, int exponent)
{
    *at++ = static_cast<char>(digits);
    if (count > 1) {
        *at++ = '.';
        put(at, digits >> 8);
        at += count - 1;
    }
    *at++ = 'e';
    *at++ = exponent < 0 ? '-' : '+';
    std::uint16_t const pair = pairs.of[exponent < 0 ? -exponent : exponent];
    *at++ = static_cast<char>(pair);
    *at++ = static_cast<char>(pair >> 8);
    return at;
}

} // namespace

char* FltNumberText::write(char* at, double value)
{
    std::uint64_t word;
    std::memcpy(&word, &value, sizeof word);
    *at = '-';
    at += word >> 63;
    double const size = std::fabs(value);
    if (size < beyondScaled) {
        auto const whole = static_cast<std::int32_t>(size);
        if (size == whole)
            return write(at, whole);
    }
    // The quotient is the decimal logarithm of 2: this is the decimal exponent, or one below it.
    int const binaryExponent = static_cast<int>(word >> 52 & 0x7ff) - 1023;
    int exponent = (binaryExponent * 78913) >> 18;
    if (exponent < lowestExponent || exponent > highestExponent)
        return writeExactly(at, size);
    double scaled = scaledBy(size, digitCount - 1 - exponent);
    if (scaled >= beyondScaled)
        scaled = scaledBy(size, digitCount - 1 - ++exponent);
    if (!(scaled >= lowestScaled && scaled < beyondScaled))
        return writeExactly(at, size);

    auto number = static_cast<std::int32_t>(scaled);
    double const fraction = scaled - number;
    if (std::fabs(fraction - 0.5) < safety)
        return writeExactly(at, size);
    number += fraction > 0.5 ? 1 : 0;
    if (number == 1000000) {
        number = 100000;
        ++exponent;
    }
    Eight const digits = sixDigits(static_cast<std::uint32_t>(number));
    int const count = countOf(digits);
    if (exponent >= 0 && exponent < digitCount)
        return writeFixed(at, digits, count, exponent);
    return exponent >= -4 && exponent < 0 ? writeBelowOne(at, digits, count, exponent)
                                          : writeScientific(at, digits, count, exponent);
}

char* FltNumberText::writeLonger(char* at, std::int32_t value)
{
    auto const size = static_cast<std::uint32_t>(value);
    if (value >= 0)
        return writeLonger(at, size);
    *at = '-';
    return write(at + 1, 0 - size);
}

/// @param value not zero
char* FltNumberText::writeLonger(char* at, std::uint32_t value)
{
    if (value >= beyondEightDigits)
        return std::to_chars(at, at + longest, value).ptr;
    Eight const digits = eightDigits(value);
    int const zeros = __builtin_ctzll(digits ^ eightZeros) / 8;
    put(at, digits >> (8 * zeros));
    return at + 8 - zeros;
}

FltNumberText::Fractions::Fractions()
{
    for (int byte = 0; byte < 256; ++byte) {
        char text[longest] = {};
        char const* const end = write(text, fractionOf(static_cast<std::uint8_t>(byte)));
        std::memcpy(texts[byte].characters, text, sizeof texts[byte].characters);
        texts[byte].size = static_cast<std::uint8_t>(end - text);
    }
}
