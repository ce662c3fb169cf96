#include "model/FltPaletteOffsets.h"

#include <gtest/gtest.h>

namespace
{

constexpr std::uint32_t none = FltPaletteOffsets::none;

FltRecordView headAt(std::size_t offset)
{
    FltRecordView head;
    head.offset = offset;
    return head;
}

TEST(FltPaletteOffsets, countFromTheHeadOfThePalette)
{
    FltPaletteOffsets offsets;
    offsets.beginPalette(headAt(1000));
    EXPECT_TRUE(offsets.add(1008, 7));
    EXPECT_TRUE(offsets.add(1048, 9));
    EXPECT_FALSE(offsets.add(1048, 11));
    EXPECT_TRUE(offsets.add(1049, 13));
    EXPECT_EQ(offsets.find(8), 7U);
    EXPECT_EQ(offsets.find(48), 9U);
    EXPECT_EQ(offsets.find(49), 13U);
}

TEST(FltPaletteOffsets, takeAPaletteWithoutAHeadForOneWithAHeadOfEightBytes)
{
    FltPaletteOffsets offsets;
    offsets.add(500, 0);
    offsets.add(540, 1);
    EXPECT_EQ(offsets.find(8), 0U);
    EXPECT_EQ(offsets.find(48), 1U);
    FltPaletteOffsets atOnce;
    atOnce.add(3, 4);
    EXPECT_EQ(atOnce.find(3), 4U);
}

TEST(FltPaletteOffsets, findNothingWhereNoVertexBegins)
{
    FltPaletteOffsets offsets;
    EXPECT_EQ(offsets.find(0), none);
    offsets.beginPalette(headAt(0));
    offsets.add(8, 0);
    offsets.add(48, 1);
    for (std::int64_t const offset : {-1L, 0L, 7L, 9L, 47L, 49L, 5000L, 1L << 40, -(1L << 40)})
        EXPECT_EQ(offsets.find(offset), none) << offset;
}

TEST(FltPaletteOffsets, findEachOfMany)
{
    FltPaletteOffsets offsets;
    offsets.beginPalette(headAt(100));
    for (std::uint32_t i = 0; i < 1000; ++i)
        ASSERT_TRUE(offsets.add(108 + 40 * std::size_t(i), i));
    for (std::uint32_t i = 0; i < 1000; ++i) {
        EXPECT_EQ(offsets.find(8 + 40 * std::int64_t(i)), i);
        EXPECT_EQ(offsets.find(9 + 40 * std::int64_t(i)), none);
    }
}

TEST(FltPaletteOffsets, findVerticesBeyondALongGap)
{
    FltPaletteOffsets offsets;
    offsets.beginPalette(headAt(0));
    offsets.add(8, 0);
    offsets.add(100'000, 1);
    EXPECT_EQ(offsets.find(50'000), none);
    EXPECT_EQ(offsets.find(100'000), 1U);
}

TEST(FltPaletteOffsets, goOnMeaningTheFirstOfTwoPalettes)
{
    FltPaletteOffsets offsets;
    offsets.beginPalette(headAt(1000));
    offsets.add(1008, 0);
    offsets.add(1048, 1);
    offsets.beginPalette(headAt(2000));
    EXPECT_FALSE(offsets.add(2008, 2));
    EXPECT_FALSE(offsets.add(2048, 3));
    EXPECT_EQ(offsets.find(8), 0U);
    EXPECT_EQ(offsets.find(48), 1U);
}

} // namespace
