#include "support/MadePictures.h"
#include "support/PictureProblems.h"
#include "support/SmallPictures.h"

#include <gtest/gtest.h>

namespace
{

bool isDamaged(std::string const& bytes)
{
    return pictureProblem(bytes).find("is a damaged SGI picture (") == 0;
}

/// A picture of three rows of ten pixels, whose first row is made of these packets.
std::string withRow(std::string const& packets, std::size_t claimedSize)
{
    std::string bytes = SmallPictures::compressedSgi(10, 3, 1);
    constexpr std::size_t starts = 512;
    constexpr std::size_t sizes = starts + 3 * 4;
    bytes.replace(starts, 4, MadePictures::big32(bytes.size()));
    bytes.replace(sizes, 4, MadePictures::big32(claimedSize));
    return bytes + packets;
}

} // namespace

TEST(SgiPicture, HasOneToFourChannels)
{
    std::string sgi = SmallPictures::plainSgi(2);
    for (char const channels : {'\0', '\5', '\x7f'}) {
        sgi[11] = channels;
        EXPECT_TRUE(isDamaged(sgi)) << int(channels);
    }
}

TEST(SgiPicture, HasPixels)
{
    for (std::size_t const size : {6, 8}) {
        std::string sgi = SmallPictures::plainSgi(2);
        sgi[size + 1] = 0;
        EXPECT_EQ(pictureProblem(sgi), "holds a picture without pixels");
    }
}

TEST(SgiPicture, IsNoLargerThanItsFileExplains)
{
    std::string sgi = SmallPictures::plainSgi(2);
    sgi.replace(6, 4, "\x7f\xff\x7f\xff");
    EXPECT_EQ(pictureProblem(sgi), "can't hold a picture of its size");
    sgi.replace(6, 4, std::string("\x80\0\0\1", 4));
    EXPECT_EQ(pictureProblem(sgi), "can't hold a picture of its size") << "beyond what the toolkit can count";
}

TEST(SgiPicture, SaysInWhichOfItsPartsItEnds)
{
    std::string const plain = SmallPictures::plainSgi(2);
    constexpr std::size_t head = 512;
    EXPECT_EQ(pictureProblem(plain.substr(0, head - 1)), "is a damaged SGI picture (it ends in its head)");
    EXPECT_EQ(pictureProblem(plain.substr(0, head)),
              "is a damaged SGI picture (it ends before its last row)");
    EXPECT_EQ(pictureProblem(plain.substr(0, plain.size() - 1)),
              "is a damaged SGI picture (it ends before its last row)");
}

TEST(SgiPicture, HasWholeRowsOfTwoBytesForAValue)
{
    std::string wide = SmallPictures::plainSgi(2);
    constexpr std::size_t head = 512, bytesOfValue = 3;
    wide[bytesOfValue] = 2;
    wide += wide.substr(head);
    EXPECT_EQ(pictureProblem(wide), "");
    EXPECT_EQ(pictureProblem(wide.substr(0, wide.size() - 1)),
              "is a damaged SGI picture (it ends before its last row)");
}

TEST(SgiPicture, HasWholeTablesOfItsRows)
{
    std::string sgi = SmallPictures::compressedSgi(10, 3, 1);
    constexpr std::size_t tables = 512;
    constexpr std::size_t inHead = 110; // where nothing is read: all rows stand there
    sgi.resize(tables + 3 * 8);
    sgi.replace(inHead, 3, std::string("\x0a\x7f\0", 3));
    for (std::size_t row = 0; row < 3; ++row) {
        sgi.replace(tables + 4 * row, 4, MadePictures::big32(inHead));
        sgi.replace(tables + 4 * (3 + row), 4, MadePictures::big32(3));
    }
    EXPECT_EQ(pictureProblem(sgi), "");
    sgi.pop_back();
    EXPECT_EQ(pictureProblem(sgi), "is a damaged SGI picture (it ends in the tables of its rows)");
}

TEST(SgiPicture, HasRowsThatEndInThem)
{
    std::string const whole = std::string("\x0a\x7f\0", 3);
    EXPECT_EQ(pictureProblem(withRow(whole, whole.size())), "");
    EXPECT_EQ(pictureProblem(withRow("\x0a\x7f", 2)), "") << "without an end";
    EXPECT_TRUE(isDamaged(withRow(whole, 0x80000003))) << "less than nothing, to some";
    EXPECT_TRUE(isDamaged(withRow(whole, 0)));
    EXPECT_TRUE(isDamaged(withRow(whole, whole.size() + 1))) << "beyond the file";
    EXPECT_TRUE(isDamaged(withRow(std::string("\x0b\x7f\0", 3), 3))) << "a run of eleven";
    EXPECT_TRUE(isDamaged(withRow("\x84\1\2", 3))) << "four pixels of two bytes";
}

TEST(SgiPicture, IsGivenToTheToolkitOnlyIfItsRowsFitIntoTheBufferThere)
{
    auto const isSafe = [](std::string const& row, std::size_t size) {
        Picture const picture = decodePicture(withRow(row, size));
        EXPECT_EQ(picture.problem, "");
        return picture.isSafeForToolkit;
    };
    EXPECT_TRUE(isSafe(std::string(30, '\0'), 20));
    EXPECT_FALSE(isSafe(std::string(30, '\0'), 21)) << "longer than twice the width";
    std::string endless = "\x81\1";
    for (int i = 0; i < 9; ++i)
        endless += "\1\x7f";
    EXPECT_FALSE(isSafe(endless, endless.size())) << "twice the width, without an end";
    endless.erase(0, 2);
    EXPECT_TRUE(isSafe(endless, endless.size()));
    EXPECT_FALSE(decodePicture(MadePictures::sgi().back().bytes).isSafeForToolkit)
        << "two bytes for each value";
}

TEST(SgiPicture, HasWholeTablesAndRows)
{
    EXPECT_TRUE(isDamaged(SmallPictures::compressedSgi(10, 3, 1).substr(0, 520)));
    std::string const plain = SmallPictures::plainSgi(3);
    EXPECT_TRUE(isDamaged(plain.substr(0, plain.size() - 1)));
    EXPECT_TRUE(isDamaged(plain.substr(0, 100)));
}
