#include "dump/FltNumberText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

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

} // namespace
