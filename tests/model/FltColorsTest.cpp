#include "model/FltColors.h"

#include "records/FltRecordColorPalette.h"
#include "support/LastRecord.h"

#include <gtest/gtest.h>

namespace
{

constexpr int full = 127;

/// A palette whose second colour is red 0xc8, green 0x64, blue 0x32.
FltColors palette()
{
    FltWriter flt;
    flt.add("ColorPalette", {{"color", {0.0, double(0xff3264c8U)}}});
    FltColors colors;
    colors.assign(LastRecord(flt).view(), 1570);
    return colors;
}

TEST(FltColors, haveRedAsTheHighestByteAndAreOpaque)
{
    EXPECT_EQ(palette().atIndex(128 + full), 0xc86432ffU);
    EXPECT_EQ(palette().atIndex(full), 0x000000ffU);
    EXPECT_EQ(FltColors::fromPacked({7, 0x32, 0x64, 0xc8}), 0xc86432ffU);
}

TEST(FltColors, areDarkerByTheLowSevenBitsOfTheirIndex)
{
    EXPECT_EQ(palette().atIndex(128), 0x000000ffU);
    EXPECT_EQ(palette().atIndex(128 + 64), 0x653219ffU) << "rounded, each by itself";
    EXPECT_EQ(palette().atIndex(128 + 63), 0x633219ffU);
}

TEST(FltColors, areWhiteOutsideOfThePalette)
{
    EXPECT_EQ(FltColors().atIndex(full), FltColors::white);
    EXPECT_EQ(palette().atIndex(-1), FltColors::white);
    constexpr int count = FltRecordColorPalette::colorCount;
    EXPECT_EQ(palette().atIndex(count * 128), FltColors::white);
    EXPECT_EQ(palette().atIndex(count * 128 - 1), 0x000000ffU) << "the last one";
}

TEST(FltColors, areThoseOfTheLastPalette)
{
    FltColors colors = palette();
    FltWriter flt;
    flt.add("ColorPalette", {{"color", {0.0, double(0xff0000ffU)}}});
    colors.assign(LastRecord(flt).view(), 1570);
    EXPECT_EQ(colors.atIndex(128 + full), 0xff0000ffU);
}

} // namespace
