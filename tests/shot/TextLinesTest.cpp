#include "shot/TextLines.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{

int darkPixelsOf(Picture const& picture)
{
    int dark = 0;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            dark += picture.at(x, y)[0] < 128 ? 1 : 0;
    return dark;
}

} // namespace

TEST(TextLines, areWiderWithMoreLetters)
{
    EXPECT_EQ(TextLines::widthOf(""), 0);
    EXPECT_GT(TextLines::widthOf("airfield"), 20);
    EXPECT_GT(TextLines::widthOf("airfield.flt"), TextLines::widthOf("airfield"));
}

TEST(TextLines, loseTheirMiddleWhereTheyAreTooWide)
{
    EXPECT_EQ(TextLines::shortened("airfield.flt", 400), "airfield.flt");
    std::string const name = "a_very_long_name_of_a_database_that_nobody_reads.flt";
    std::string const shorter = TextLines::shortened(name, 150);
    EXPECT_LE(TextLines::widthOf(shorter), 150);
    EXPECT_GT(TextLines::widthOf(shorter), 120);
    EXPECT_EQ(shorter.substr(0, 6), "a_very");
    EXPECT_EQ(shorter.substr(shorter.size() - 4), ".flt");
    EXPECT_EQ(TextLines::shortened(std::string(100000, 'x'), 150).find("..."), shorter.find("..."));
}

TEST(TextLines, keepLettersOfSeveralBytesWhole)
{
    std::string word;
    for (int i = 0; i < 50; ++i)
        word += "\xc3\xa4";
    std::string const shorter = TextLines::shortened(word, 100);
    std::size_t const dots = shorter.find("...");
    EXPECT_EQ(dots % 2, 0U);
    EXPECT_EQ((shorter.size() - dots - 3) % 2, 0U);
}

TEST(TextLines, breakBetweenWords)
{
    std::vector<std::string> const lines = TextLines::wrapped("one two three four five six seven", 90, 99);
    EXPECT_GT(lines.size(), 2U);
    std::string all;
    for (std::string const& line : lines) {
        EXPECT_LE(TextLines::widthOf(line), 90) << line;
        all += (all.empty() ? "" : " ") + line;
    }
    EXPECT_EQ(all, "one two three four five six seven");
    EXPECT_EQ(TextLines::wrapped("one two three four five six seven", 90, 2).size(), 2U);
    EXPECT_TRUE(TextLines::wrapped("", 90, 9).empty());
}

TEST(TextLines, areDrawnInTheMiddleOrOnTheLeft)
{
    Picture const left = TextLines::draw({"name"}, 200, false);
    Picture const middle = TextLines::draw({"name", "again"}, 200, true);
    EXPECT_EQ(left.height, TextLines::height);
    EXPECT_EQ(middle.height, 2 * TextLines::height);
    EXPECT_GT(darkPixelsOf(left), 20);
    EXPECT_GT(darkPixelsOf(middle), darkPixelsOf(left));
    for (int y = 0; y < left.height; ++y)
        for (int x = 100; x < 200; ++x)
            EXPECT_GT(left.at(x, y)[0], 200);
    for (int y = 0; y < middle.height; ++y)
        for (int const x : {0, 20, 40, 60, 140, 160, 180, 199})
            EXPECT_GT(middle.at(x, y)[0], 200);
}
