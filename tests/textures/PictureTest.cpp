#include "textures/Picture.h"

#include "support/MadePictures.h"
#include "support/PictureProblems.h"
#include "support/ScratchFolder.h"
#include "toolkit/RegularFile.h"

#include <Inventor/SbImage.h>
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using Toolkit = MadePicture::Toolkit;

/// Where bytes differ by more than they may, for the message; nothing if they don't.
std::string difference(PicturePixels const& pixels, MadePicture const& made)
{
    if (pixels.bytes.size() != made.pixels.size())
        return std::to_string(pixels.bytes.size()) + " bytes";
    for (std::size_t i = 0; i < made.pixels.size(); ++i) {
        int const expected = static_cast<unsigned char>(made.pixels[i]);
        if (std::abs(pixels.bytes[i] - expected) > made.tolerance)
            return "byte " + std::to_string(i) + " is " + std::to_string(pixels.bytes[i]) + ", not " +
                   std::to_string(expected);
    }
    return {};
}

class EachPictureTest : public testing::TestWithParam<MadePicture>
{
protected:
    ScratchFolder folder;
};

TEST_P(EachPictureTest, IsReadAsItIsMade)
{
    MadePicture const& made = GetParam();
    Picture const picture = Picture::read(folder.write(made.name, made.bytes));
    ASSERT_NE(picture.pixels, nullptr) << picture.problem;
    EXPECT_EQ(picture.problem, "");
    EXPECT_EQ(picture.pixels->width, made.width);
    EXPECT_EQ(picture.pixels->height, made.height);
    EXPECT_EQ(picture.pixels->components, made.components);
    EXPECT_EQ(difference(*picture.pixels, made), "");
}

TEST_P(EachPictureTest, IsReadAsTheToolkitReadsItWhereThatIsRight)
{
    MadePicture const& made = GetParam();
    std::string const path = folder.write(made.name, made.bytes);
    Picture const picture = Picture::read(path);
    ASSERT_NE(picture.pixels, nullptr) << picture.problem;
    SbImage image;
    bool const isRead = image.readFile(path.c_str()) == TRUE;
    SbVec2s size;
    int components = 0;
    unsigned char const* const theirs = image.getValue(size, components);
    ASSERT_EQ(isRead, theirs != nullptr);
    EXPECT_EQ(theirs == nullptr, made.toolkit == Toolkit::refuses);
    if (theirs == nullptr)
        return;
    PicturePixels const& ours = *picture.pixels;
    bool const isSame = size[0] == ours.width && size[1] == ours.height && components == ours.components &&
                        std::equal(ours.bytes.begin(), ours.bytes.end(), theirs);
    EXPECT_EQ(isSame, made.toolkit == Toolkit::agrees) << components << " components";
}

INSTANTIATE_TEST_SUITE_P(Made, EachPictureTest, testing::ValuesIn(MadePictures::all()),
                         [](auto const& picture) { return MadePictures::nameOfTest(picture.param); });

} // namespace

TEST(Picture, OfAFormatThatIsntReadIsNamed)
{
    EXPECT_EQ(pictureProblem("DDS |", "a.dds"), "is a DDS picture, which isn't read");
    EXPECT_EQ(pictureProblem("BM6", "a.bmp"), "is a BMP picture, which isn't read");
    EXPECT_EQ(pictureProblem("\x19\x91", "a.pic"), "is a PIC picture, which isn't read");
    EXPECT_EQ(pictureProblem("BM6", "a.tga"), "is a BMP picture, which isn't read")
        << "whatever it is called";
    EXPECT_EQ(pictureProblem("P6 1 1 255 rgb", "a.rgb"), "is no picture of a kind that is read");
    EXPECT_EQ(pictureProblem("", "a.rgb"), "is empty");
}

TEST(Picture, IsKnownByItsFirstBytesWhateverItsName)
{
    for (MadePicture const& made : {MadePictures::png()[0], MadePictures::jpeg()[0], MadePictures::tiff()[0],
                                    MadePictures::gif()[0], MadePictures::sgi()[0]})
        EXPECT_EQ(pictureProblem(made.bytes, "picture.tga"), "");
    std::string const tga = MadePictures::tga()[0].bytes;
    EXPECT_EQ(pictureProblem(tga, "a.rgb"), "is no picture of a kind that is read");
    EXPECT_EQ(pictureProblem(tga, "a.TGA"), "");
}

TEST(Picture, IsReadFromAnOpenFileThatStaysWhereItIs)
{
    ScratchFolder const folder;
    OpenFile const file = RegularFile::open(folder.write("a.rgb", MadePictures::sgi()[0].bytes).c_str());
    ::lseek(file.descriptor(), 5, SEEK_SET);
    EXPECT_EQ(Picture::read(file.descriptor(), "a.rgb").problem, "");
    EXPECT_EQ(::lseek(file.descriptor(), 0, SEEK_CUR), 5);
}

TEST(Picture, IsntReadFromWhatIsNoPlainFile)
{
    ScratchFolder const folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(Picture::read(folder / "pipe").problem, "isn't a plain file");
    EXPECT_EQ(Picture::read(folder / "").problem, "isn't a plain file");
    EXPECT_EQ(Picture::read(folder / "none").problem, "can't be opened: No such file or directory");
}

TEST(Picture, IsNeverLargerThanTheToolkitCanCount)
{
    ScratchFolder const folder;
    std::string const path = folder.write("a.rgb", MadePictures::sgi()[0].bytes);
    std::filesystem::resize_file(path, std::uintmax_t(1) << 31); // without a block on the disk
    EXPECT_EQ(Picture::read(path).problem, "is larger than any picture");
}
