#include "dump/FltNumberText.h"

#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

// The linker has the library call the one for std::to_chars() of a double with so many digits, and this file
// reach the system's own by the other.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" std::to_chars_result __wrap__ZSt8to_charsPcS_dSt12chars_formati(char* begin, char* end,
                                                                           double value,
                                                                           std::chars_format format,
                                                                           int digits);
extern "C" std::to_chars_result __real__ZSt8to_charsPcS_dSt12chars_formati(char* begin, char* end,
                                                                           double value,
                                                                           std::chars_format format,
                                                                           int digits);
// NOLINTEND(bugprone-reserved-identifier)

namespace
{

std::atomic<int> exactWays{0}; ///< How often the standard library has written a double.

} // namespace

extern "C" std::to_chars_result __wrap__ZSt8to_charsPcS_dSt12chars_formati(char* begin, char* end,
                                                                           double value,
                                                                           std::chars_format format,
                                                                           int digits)
{
    ++exactWays;
    return __real__ZSt8to_charsPcS_dSt12chars_formati(begin, end, value, format, digits);
}

namespace
{

std::string textOf(double value)
{
    char text[FltNumberText::longest];
    return {text, FltNumberText::write(text, value)};
}

std::string standardTextOf(double value)
{
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6).ptr};
}

void expectStandard(double value)
{
    for (double const signedValue : {value, -value})
        ASSERT_EQ(textOf(signedValue), standardTextOf(signedValue)) << std::hexfloat << signedValue;
}

/// The value and its neighbours.
void expectStandardAround(double value)
{
    expectStandard(value);
    expectStandard(std::nextafter(value, std::numeric_limits<double>::infinity()));
    expectStandard(std::nextafter(value, 0));
}

TEST(FltNumberTextTest, SomeNumbersAsTheyPrint)
{
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(-0.0), "-0");
    EXPECT_EQ(textOf(7), "7");
    EXPECT_EQ(textOf(-12.5), "-12.5");
    EXPECT_EQ(textOf(0.25), "0.25");
    EXPECT_EQ(textOf(0.0001), "0.0001");
    EXPECT_EQ(textOf(0.00001), "1e-05");
    EXPECT_EQ(textOf(123456), "123456");
    EXPECT_EQ(textOf(999999.4), "999999");
    EXPECT_EQ(textOf(999999.5), "1e+06");
    EXPECT_EQ(textOf(1234567), "1.23457e+06");
    EXPECT_EQ(textOf(-6.02214076e23), "-6.02214e+23");
    EXPECT_EQ(textOf(1e100), "1e+100");
    EXPECT_EQ(textOf(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(FltNumberTextTest, HalfwayNumbersGoToTheEvenDigit)
{
    EXPECT_EQ(textOf(100000.5), "100000");
    EXPECT_EQ(textOf(100001.5), "100002");
    EXPECT_EQ(textOf(0.5 + 1.0 / 64), "0.515625");
    EXPECT_EQ(textOf(1 + 1.0 / 64), "1.01562");
    EXPECT_EQ(textOf(1 + 3.0 / 64), "1.04688");
}

TEST(FltNumberTextTest, TextIsTheStandardLibrarysAtEveryPowerOfTen)
{
    for (int exponent = -323; exponent <= 308; ++exponent)
        for (char const* digits : {"1", "5", "9.99999", "9.999994", "9.999995", "9.9999995", "1.000005"})
            expectStandardAround(std::strtod((digits + ("e" + std::to_string(exponent))).c_str(), nullptr));
}

TEST(FltNumberTextTest, TextIsTheStandardLibrarysNearHalves)
{
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i) {
        double const half = 100000.5 + static_cast<double>(random() % 900000);
        int const power = static_cast<int>(random() % 23);
        expectStandardAround(half * std::pow(10.0, power));
        expectStandardAround(half / std::pow(10.0, power));
        expectStandardAround(static_cast<double>(random() % 16777216) / std::ldexp(1, power));
    }
}

/// How often the library asks the standard one for the text of a number.
int exactWaysOf(double value)
{
    int const before = exactWays;
    static_cast<void>(textOf(value));
    return exactWays - before;
}

/// The standard library takes several times as long, and a database is full of numbers.
TEST(FltNumberTextTest, NumbersOfUsualSizeAreWrittenWithoutTheStandardLibrary)
{
    for (int exponent = -16; exponent <= 26; ++exponent)
        for (char const* digits : {"1", "1.00000312", "1.5", "2.2345678", "3.1415926", "5.0000011",
                                   "7.891011", "9.8765432", "9.9999949"}) {
            double const value = std::strtod((digits + ("e" + std::to_string(exponent))).c_str(), nullptr);
            EXPECT_EQ(exactWaysOf(value), 0) << value;
            EXPECT_EQ(exactWaysOf(-value), 0) << value;
        }
    EXPECT_EQ(exactWaysOf(9.8765432e-17), 0);
    EXPECT_EQ(exactWaysOf(0), 0);
    EXPECT_EQ(exactWaysOf(999999), 0);
}

TEST(FltNumberTextTest, HalvesAndNumbersFarFromOneAreLeftToTheStandardLibrary)
{
    for (double const value : {100000.5, 5e-18, 5e27, 1e29, 1e300, 1e-300})
        EXPECT_EQ(exactWaysOf(value), 1) << value;
}

TEST(FltNumberTextTest, TextIsTheStandardLibrarysForRandomNumbers)
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 100000; ++i) {
        std::uint64_t const bits = random();
        double any;
        std::memcpy(&any, &bits, sizeof any);
        expectStandard(any);
        auto const bitsOfFloat = static_cast<std::uint32_t>(random());
        float anyFloat;
        std::memcpy(&anyFloat, &bitsOfFloat, sizeof anyFloat);
        expectStandard(static_cast<double>(anyFloat));
        double const fraction = static_cast<double>(random() >> 11) / 9007199254740992.0;
        expectStandard(fraction * std::pow(10.0, static_cast<int>(random() % 50) - 24));
        expectStandard(static_cast<double>(random() % 20000000) / 1000);
        expectStandard(static_cast<double>(i));
    }
}

template <class Number>
void expectStandardWhole(Number value)
{
    char text[FltNumberText::longest];
    std::string const written(text, FltNumberText::write(text, value));
    ASSERT_EQ(written, std::to_string(value));
}

TEST(FltNumberTextTest, WholeNumbersOfAnyLengthAreTheStandardLibrarys)
{
    for (std::int64_t power = 1; power <= 10'000'000'000; power *= 10)
        for (std::int64_t const digit : {1, 2, 7, 9})
            for (std::int64_t const more : {-1, 0, 1}) {
                auto const value = static_cast<std::uint32_t>(digit * power + more);
                expectStandardWhole(value);
                expectStandardWhole(static_cast<std::int32_t>(value));
                expectStandardWhole(-static_cast<std::int32_t>(value >> 1));
            }
    for (std::uint32_t const value : {0U, 10203040U, 90000009U, 99999999U, 100000000U, 0xffffffffU})
        expectStandardWhole(value);
    for (std::int32_t const value : {0, -1, -9, -10, INT32_MAX, INT32_MIN})
        expectStandardWhole(value);
    std::mt19937 random(3);
    for (int i = 0; i < 100000; ++i) {
        auto const value = static_cast<std::uint32_t>(random()) >> (random() % 32);
        expectStandardWhole(value);
        expectStandardWhole(static_cast<std::int32_t>(value));
    }
}

} // namespace
