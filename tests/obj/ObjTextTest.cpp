#include "obj/ObjText.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

std::string corner(std::uint64_t position, std::uint64_t uv, std::uint64_t normal)
{
    ObjText text;
    text.corner(position, uv, normal);
    return text.text();
}

std::string number(double value)
{
    ObjText text;
    text.line("v", {value});
    return text.text();
}

} // namespace

TEST(ObjText, writesNumbersToAMillionthWithoutNeedlessDigits)
{
    EXPECT_EQ(number(12.3456784), "v 12.345678\n");
    EXPECT_EQ(number(12.3456786), "v 12.345679\n");
    EXPECT_EQ(number(-0.5), "v -0.5\n");
    EXPECT_EQ(number(1200), "v 1200\n");
    EXPECT_EQ(number(0), "v 0\n");
}

TEST(ObjText, writesNoSignOfNothing)
{
    EXPECT_EQ(number(-0.0), "v 0\n");
    EXPECT_EQ(number(-1e-9), "v 0\n");
}

TEST(ObjText, writesNumbersOfAnySize)
{
    EXPECT_EQ(number(std::numeric_limits<double>::lowest()).size(), std::string("v -\n").size() + 309);
    EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "v 0\n");
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "v 0\n");
}

TEST(ObjText, writesColoursInTheirOrder)
{
    ObjText text;
    text.line("Ks", SbColor(0.5F, 0.25F, 1));
    EXPECT_EQ(text.text(), "Ks 0.5 0.25 1\n");
}

TEST(ObjText, writesOfACornerWhatItHas)
{
    EXPECT_EQ(corner(1, 0, 0), " 1");
    EXPECT_EQ(corner(1, 2, 0), " 1/2");
    EXPECT_EQ(corner(1, 0, 3), " 1//3");
    EXPECT_EQ(corner(1, 2, 3), " 1/2/3");
    EXPECT_EQ(corner(2, 1, 1), " 2/1/1");
    EXPECT_EQ(corner(2, 0, 1), " 2//1");
}
