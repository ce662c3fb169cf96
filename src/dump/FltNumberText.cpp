#include "dump/FltNumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace
{

constexpr int digitCount = 6;
constexpr double lowestScaled = 1e5;
constexpr double beyondScaled = 1e6;

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

bool isInReach(int power)
{
    return power >= -highestPower && power <= highestPower;
}

char* writeDigits(char* at, std::uint32_t digits, int count)
{
    for (int i = count - 1; i >= 0; --i) {
        at[i] = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    return at + count;
}

char* writeExactly(char* at, double value)
{
    return std::to_chars(at, at + FltNumberText::longest, value, std::chars_format::general, digitCount).ptr;
}

/// 0.0ddd, 0.ddd, d.ddd, dddddd and the like. @param exponent that of the first digit, from -4 to 5
char* writeFixed(char* at, char const* digits, int count, int exponent)
{
    if (exponent < 0) {
        std::fill_n(at, 5, '0');
        at[1] = '.';
        at += 1 - exponent;
        std::memcpy(at, digits, static_cast<std::size_t>(digitCount));
        return at + count;
    }
    int const whole = exponent + 1;
    std::memcpy(at, digits, static_cast<std::size_t>(digitCount));
    if (count <= whole)
        return at + whole;
    std::memmove(at + whole + 1, at + whole, static_cast<std::size_t>(count - whole));
    at[whole] = '.';
    return at + count + 1;
}

/// d.ddde-05 and the like. @param exponent of at most two digits
char* writeScientific(char* at, char const* digits, int count, int exponent)
{
    *at++ = digits[0];
    if (count > 1) {
        *at++ = '.';
        std::memcpy(at, digits + 1, static_cast<std::size_t>(count - 1));
        at += count - 1;
    }
    *at++ = 'e';
    *at++ = exponent < 0 ? '-' : '+';
    return writeDigits(at, static_cast<std::uint32_t>(exponent < 0 ? -exponent : exponent), 2);
}

} // namespace

char* FltNumberText::write(char* at, double value)
{
    double const size = std::fabs(value);
    if (size < 10 && size == static_cast<int>(size)) {
        if (std::signbit(value))
            *at++ = '-';
        *at++ = static_cast<char>('0' + static_cast<int>(size));
        return at;
    }
    std::uint64_t word;
    std::memcpy(&word, &size, sizeof word);
    // The quotient is the decimal logarithm of 2: this is the decimal exponent, or one below it.
    int const binaryExponent = static_cast<int>(word >> 52) - 1023;
    int exponent = (binaryExponent * 78913) >> 18;
    if (!isInReach(digitCount - 1 - exponent) || !isInReach(digitCount - 2 - exponent))
        return writeExactly(at, value);
    double scaled = scaledBy(size, digitCount - 1 - exponent);
    if (scaled >= beyondScaled)
        scaled = scaledBy(size, digitCount - 1 - ++exponent);
    if (!(scaled >= lowestScaled && scaled < beyondScaled))
        return writeExactly(at, value);

    auto number = static_cast<std::uint32_t>(scaled);
    double const fraction = scaled - number;
    if (std::fabs(fraction - 0.5) < safety)
        return writeExactly(at, value);
    if (fraction > 0.5)
        ++number;
    if (number == 1000000) {
        number = 100000;
        ++exponent;
    }
    char digits[digitCount];
    writeDigits(digits, number, digitCount);
    int count = digitCount;
    while (digits[count - 1] == '0')
        --count;
    if (std::signbit(value))
        *at++ = '-';
    return exponent >= -4 && exponent < digitCount ? writeFixed(at, digits, count, exponent)
                                                   : writeScientific(at, digits, count, exponent);
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
