#include "convert/TreePart.h"

#include "support/Program.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace
{

/// Places as terrain has them: rows of tiles.
std::vector<std::string> tiles(int rows, int columns)
{
    std::vector<std::string> places;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            places.push_back("terrain/row_" + std::to_string(row) + "/tile_" + std::to_string(row) + "_" +
                             std::to_string(column) + ".flt");
    return places;
}

} // namespace

TEST(TreePart, readsItsNumberAndHowManyThereAre)
{
    TreePart const part = TreePart::named("3/16");
    EXPECT_EQ(part.number, 3U);
    EXPECT_EQ(part.count, 16U);
    EXPECT_EQ(part.name(), "3/16");
    EXPECT_EQ(TreePart::named("0/1").count, 1U);
    for (char const* const wrong : {"", "3", "/", "16/16", "17/16", "-1/4", "0/0", "1/2/3", "a/b", "1/ 2",
                                    " 0/1", "0/99999999999999999999", "0/1000001"})
        EXPECT_THROW(TreePart::named(wrong), UsageError) << wrong;
}

TEST(TreePart, readsHowManyPartsAreToBePlanned)
{
    EXPECT_EQ(TreePart::countIn("--plan", "64"), 64U);
    for (char const* const wrong : {"", "0", "-1", "x", "6 4", "1000001"})
        EXPECT_THROW(TreePart::countIn("--plan", wrong), UsageError) << wrong;
}

TEST(TreePart, allTogetherHoldEachPlaceOnce)
{
    std::vector<std::string> const places = tiles(50, 60);
    for (std::uint64_t const count : {1U, 2U, 7U, 1000U}) {
        std::vector<std::size_t> held(places.size());
        for (std::uint64_t number = 0; number < count; ++number)
            for (std::size_t i = 0; i < places.size(); ++i)
                held[i] += TreePart{number, count}.holds(places[i]) ? 1 : 0;
        EXPECT_EQ(std::count(held.begin(), held.end(), 1U), static_cast<std::ptrdiff_t>(places.size()))
            << count;
    }
}

TEST(TreePart, isNowhereMuchLargerThanTheMeanWithAThousandFilesInEach)
{
    constexpr std::size_t perPart = 1000;
    std::vector<std::string> const places = tiles(1000, 1000);
    for (std::size_t const count : {2U, 7U, 64U, 1000U}) {
        std::vector<std::size_t> sizes(count);
        for (std::size_t i = 0; i < count * perPart; ++i)
            ++sizes[TreePart::numberOf(places[i], count)];
        EXPECT_LE(*std::max_element(sizes.begin(), sizes.end()), perPart * 13 / 10) << count;
    }
}

TEST(TreePart, isTheSameInAllVersions)
{
    EXPECT_EQ(TreePart::hash(""), 0xefd01f60ba992926U);
    EXPECT_EQ(TreePart::hash("a"), 0x82a2a958a9bece5bU) << "FNV-1a is af63dc4c8601ec8c before it is mixed";
    EXPECT_NE(TreePart::hash("north/\xfc.flt"), TreePart::hash("north/\x7c.flt")) << "all bits of a byte";
}
