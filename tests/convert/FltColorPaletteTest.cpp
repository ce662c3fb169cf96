#include "convert/FltColorPalette.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltColorPaletteTest, AnIndexHoldsAPositionAboveSevenBitsOfIntensity)
{
    EXPECT_EQ(FltColorPalette::positionOf(127), 0);
    EXPECT_EQ(FltColorPalette::positionOf(128), 1);
    EXPECT_EQ(FltColorPalette::positionOf(-1), -1);
    EXPECT_EQ(FltColorPalette::positionOf(-129), -2);
    EXPECT_EQ(FltColorPalette::intensityOf(128), 0.0F);
    EXPECT_EQ(FltColorPalette::intensityOf(128 + 64), 64.0F / 127.0F);
    EXPECT_EQ(FltColorPalette::intensityOf(127), 1.0F);
    EXPECT_EQ(FltColorPalette::intensityOf(-1), 1.0F);
}

TEST(FltColorPaletteTest, TakesTheWordsOfARecordInTheToolkitsOrder)
{
    FltRecordColorPalette record(4232);
    record.color[0] = 0x11223344;
    record.color[FltRecordColorPalette::colorCount - 1] = 0xaabbccdd;
    FltColorPalette palette;
    palette.assign(record);
    EXPECT_EQ(palette.getPacked(0), 0x44332211U);
    EXPECT_EQ(palette.getPacked(1), 0U);
    EXPECT_EQ(palette.getPacked(FltRecordColorPalette::colorCount - 1), 0xddccbbaaU);
}

TEST(FltColorPaletteTest, ASecondRecordReplacesAllColors)
{
    FltRecordColorPalette first(4232);
    first.color[7] = 0xff;
    FltColorPalette palette;
    palette.assign(first);
    palette.assign(FltRecordColorPalette(4232));
    EXPECT_EQ(palette.getPacked(7), 0U);
}

TEST(FltColorPaletteTest, PositionsThatThePaletteDoesNotHaveAreWhite)
{
    FltColorPalette const palette;
    for (std::int64_t const position : {std::int64_t(-1), std::int64_t(FltRecordColorPalette::colorCount),
                                        std::int64_t(FltColorPalette::lastPosition), std::int64_t(1) << 40}) {
        EXPECT_EQ(palette.getPacked(position), FltColorPalette::white) << position;
        EXPECT_EQ(palette.getColor(position), SbColor(1, 1, 1)) << position;
    }
}

TEST(FltColorPaletteTest, AColorIsUnpackedWithoutItsAlpha)
{
    EXPECT_EQ(FltColorPalette::unpack(0xff000000), SbColor(1, 0, 0));
    EXPECT_EQ(FltColorPalette::unpack(0x00ff00ff), SbColor(0, 1, 0));
    EXPECT_EQ(FltColorPalette::unpack(0x0000ff80), SbColor(0, 0, 1));
}

} // namespace
