#include "support/MadePictures.h"
#include "support/PictureProblems.h"

#include <gtest/gtest.h>

namespace
{

std::string problemOf(std::string const& bytes)
{
    return pictureProblem(bytes, "a.tga");
}

std::string const made = MadePictures::tga()[0].bytes;
constexpr char const* otherKind = "is no TGA picture of a kind that is read";

} // namespace

TEST(TgaPicture, HasAStrictHead)
{
    struct Change {
        std::size_t at;
        int value;
    };
    for (Change const change :
         {Change{1, 2}, Change{1, 1}, Change{2, 0}, Change{2, 1}, Change{2, 4}, Change{2, 32}, Change{16, 8},
          Change{16, 15}, Change{16, 48}, Change{17, 0x40}, Change{17, 0x80}}) {
        std::string bytes = made;
        bytes[change.at] = static_cast<char>(change.value);
        EXPECT_EQ(problemOf(bytes), otherKind) << change.at << ' ' << change.value;
    }
    std::string withPalette = MadePictures::tga()[4].bytes;
    withPalette[7] = 15; // bits of its colours
    EXPECT_EQ(problemOf(withPalette), otherKind);
    EXPECT_EQ(problemOf(made.substr(0, 17)), otherKind);
    EXPECT_NE(problemOf(made.substr(0, 18)), otherKind) << "it has its whole head";
}

TEST(TgaPicture, IsNoLargerThanItsFileExplains)
{
    std::string bytes = made;
    bytes.replace(12, 4, "\x30\x75\x30\x75");
    EXPECT_EQ(problemOf(bytes), "can't hold a picture of its size");
}

TEST(TgaPicture, HasPixelsToItsEnd)
{
    for (MadePicture const& picture : MadePictures::tga())
        EXPECT_EQ(problemOf(picture.bytes.substr(0, picture.bytes.size() - 1)),
                  "is a damaged TGA picture (it ends before its last pixel)")
            << picture.name;
    EXPECT_EQ(problemOf(made + "more"), "");
}

TEST(TgaPicture, HasAColorForEachPixel)
{
    std::string bytes = MadePictures::tga()[14].bytes; // with a palette from 2 to 31
    bytes.back() = 1;
    EXPECT_EQ(problemOf(bytes), "is a damaged TGA picture (a pixel has a colour that isn't there)");
    bytes.back() = 32;
    EXPECT_EQ(problemOf(bytes), "is a damaged TGA picture (a pixel has a colour that isn't there)");
    bytes.back() = 31;
    EXPECT_EQ(problemOf(bytes), "");
}
