#include "toolkit/ImageSafety.h"

#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"

#include <Inventor/SbImage.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <numeric>

namespace
{

struct Picture {
    char const* name;
    std::function<void(std::string const& path)> write;
};

void PrintTo(Picture const& picture, std::ostream* out)
{
    *out << picture.name;
}

void writeBytes(std::string const& path, std::string const& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Reads a picture as a conversion does, and all its pixels.
/// @return whether it was given to the library, which may have refused it then
bool readIfSafe(std::string const& path)
{
    if (ImageSafety::problemOf(path) != nullptr)
        return false;
    SbImage image;
    image.readFile(path.c_str());
    SbVec2s size;
    int channels = 0;
    unsigned char const* const pixels = image.getValue(size, channels);
    if (pixels != nullptr) {
        int const sum = std::accumulate(pixels, pixels + std::ptrdiff_t(size[0]) * size[1] * channels, 0);
        EXPECT_GE(sum, 0);
    }
    return true;
}

class BrokenPicturesTest : public testing::TestWithParam<Picture>
{
protected:
    BrokenPicturesTest() : path(folder / GetParam().name)
    {
        GetParam().write(path);
        std::ifstream file(path, std::ios::binary);
        whole.assign(std::istreambuf_iterator<char>(file), {});
    }

    void read(std::string const& bytes)
    {
        std::filesystem::remove(path); // a file that is cut and written again waits for the disk
        writeBytes(path, bytes);
        (readIfSafe(path) ? given : refused)++;
    }

    ScratchFolder folder;
    std::string path;
    std::string whole;
    int given = 0;
    int refused = 0;
};

} // namespace

TEST_P(BrokenPicturesTest, NoChangeOfAByteHurtsTheProcess)
{
    read(whole);
    ASSERT_EQ(given, 1);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        auto const byte = static_cast<unsigned char>(whole[at]);
        for (int const value : {0, 1, 4, 0x7f, 0x80, 0xff, byte + 1, byte - 1, byte ^ 0x10}) {
            std::string changed = whole;
            changed[at] = static_cast<char>(value);
            if (changed != whole)
                read(changed);
        }
    }
    EXPECT_GT(given, 1);
}

TEST_P(BrokenPicturesTest, NoCutHurtsTheProcess)
{
    for (std::size_t size = 0; size <= whole.size(); ++size)
        read(whole.substr(0, size));
    EXPECT_GT(given, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Picture, BrokenPicturesTest,
    testing::Values(
        Picture{"plain.rgb", [](auto const& path) { writeBytes(path, SmallPictures::plainSgi(3)); }},
        Picture{"packed.rgb",
                [](auto const& path) { writeBytes(path, SmallPictures::compressedSgi(6, 3, 3)); }},
        Picture{"packed.tga", [](auto const& path) { writeBytes(path, SmallPictures::compressedTga(6, 5)); }},
        Picture{"plain.jpg", [](auto const& path) { SmallPictures::writeJpeg(path, 6, 5, false); }},
        Picture{"scans.jpg", [](auto const& path) { SmallPictures::writeJpeg(path, 6, 5, true); }},
        Picture{"clear.png", [](auto const& path) { SmallPictures::writePng(path, 6, 5); }},
        Picture{"grey.tif", [](auto const& path) { SmallPictures::writeTiff(path, 6, 5, 1); }},
        Picture{"color.tif", [](auto const& path) { SmallPictures::writeTiff(path, 6, 5, 3); }},
        Picture{"clear.tif", [](auto const& path) { SmallPictures::writeTiff(path, 6, 5, 4); }}));
