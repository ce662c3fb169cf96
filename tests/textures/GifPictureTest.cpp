#include "support/MadePictures.h"
#include "support/PictureProblems.h"

#include <gtest/gtest.h>

namespace
{

std::string const made = MadePictures::gif()[0].bytes;
constexpr std::size_t screen = 6;
constexpr std::size_t part = 13 + 3 * 16;

} // namespace

TEST(GifPicture, OfAVersionThatNobodyWritesIsntRead)
{
    for (char const* const version : {"79a", "88a", "\0\0\0"}) {
        std::string bytes = made;
        bytes.replace(3, 3, version, 3);
        EXPECT_EQ(pictureProblem(bytes), "is no picture of a kind that is read");
    }
}

TEST(GifPicture, WithoutItsEndIsDamaged)
{
    for (std::size_t size = screen; size < made.size(); ++size)
        EXPECT_EQ(pictureProblem(made.substr(0, size)).find("is a damaged GIF picture ("), 0U) << size;
    EXPECT_EQ(pictureProblem(made + "more"), "");
}

TEST(GifPicture, IsNoLargerThanItsFileExplains)
{
    std::string bytes = made;
    bytes.replace(screen, 4, "\x30\x75\x30\x75");
    EXPECT_EQ(pictureProblem(bytes), "can't hold a picture of its size");
}

TEST(GifPicture, HasItsPartsInside)
{
    ASSERT_EQ(made[part], ',');
    std::string bytes = made;
    bytes[part + 1] = 1;
    EXPECT_EQ(pictureProblem(bytes), "is a damaged GIF picture (a part lies outside)");
    bytes = made;
    bytes[part + 3] = 1; // from the top
    EXPECT_EQ(pictureProblem(bytes), "is a damaged GIF picture (a part lies outside)");
    bytes = made;
    bytes[part + 7] = 0; // the height
    EXPECT_EQ(pictureProblem(bytes), "is a damaged GIF picture (a part lies outside)");
    for (std::size_t const least : {part + 5, part + 7}) { // one column, one row
        bytes = made;
        bytes[least] = 1;
        EXPECT_EQ(pictureProblem(bytes), "");
    }
}

TEST(GifPicture, HasAColorForEachPixel)
{
    std::string without = made;
    without[10] = 0;
    without.erase(13, 3 * 16);
    EXPECT_EQ(pictureProblem(without), "is a damaged GIF picture (it has no colours)");
    std::string few = made;
    few[10] = static_cast<char>(few[10] & ~7); // two colours
    few.erase(13 + 3 * 2, 3 * 14);
    EXPECT_EQ(pictureProblem(few), "is a damaged GIF picture (a pixel has a colour that isn't there)");
}

TEST(GifPicture, HasAtLeastOnePart)
{
    EXPECT_EQ(pictureProblem(made.substr(0, part) + ';'),
              "is a damaged GIF picture (it ends before its first picture)");
}
