#include "convert/PartSizes.h"

#include "convert/TreePart.h"

#include <gtest/gtest.h>

namespace
{

std::vector<ConversionPlan::Entry> entries(std::size_t count)
{
    std::vector<ConversionPlan::Entry> list(count);
    for (std::size_t i = 0; i < count; ++i) {
        list[i].place = "tile_" + std::to_string(i) + ".flt";
        list[i].input = "in/" + list[i].place;
        list[i].bytes = 1000 + i;
    }
    return list;
}

} // namespace

TEST(PartSizes, tellHowEvenPartsAre)
{
    PartSizes const sizes(entries(8000), 8);
    EXPECT_GE(sizes.largestToMean(), 1);
    EXPECT_LE(sizes.largestToMean(), 1.3);
    std::string const text = sizes.text();
    EXPECT_EQ(text.find("8,000 databases, 40.0 MB, in 8 parts\n"), 0U) << text;
    EXPECT_NE(text.find("largest database: 9.0 kB, in/tile_7999.flt\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Take fewer parts"), std::string::npos) << text;
}

TEST(PartSizes, adviseAgainstPartsOfAFewFiles)
{
    EXPECT_NE(PartSizes(entries(500), 100).text().find("Take fewer parts"), std::string::npos);
    EXPECT_EQ(PartSizes(entries(5), 1).text().find("Take fewer parts"), std::string::npos)
        << "there are none";
}

TEST(PartSizes, ofNothing)
{
    EXPECT_EQ(PartSizes({}, 4).largestToMean(), 0);
    EXPECT_EQ(PartSizes({}, 4).text().find("0 databases, 0 bytes, in 4 parts\n"), 0U);
}
