#include "support/MadePictures.h"
#include "support/PictureProblems.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>

namespace
{

class BrokenPicturesTest : public testing::TestWithParam<MadePicture>
{
protected:
    /// Decodes a picture and uses all its pixels.
    void read(std::string const& bytes)
    {
        Picture const picture = decodePicture(bytes, GetParam().name);
        EXPECT_NE(picture.pixels == nullptr, picture.problem.empty());
        if (picture.pixels == nullptr) {
            ++refused;
            return;
        }
        ++taken;
        auto const& pixels = *picture.pixels;
        EXPECT_EQ(pixels.bytes.size(),
                  std::size_t(pixels.width) * std::size_t(pixels.height) * std::size_t(pixels.components));
        EXPECT_GE(std::accumulate(pixels.bytes.begin(), pixels.bytes.end(), std::uint64_t(0)), 0U);
    }

    int taken = 0;
    int refused = 0;
};

} // namespace

TEST_P(BrokenPicturesTest, NoChangeOfAByteHurtsTheProcess)
{
    std::string const& whole = GetParam().bytes;
    read(whole);
    ASSERT_EQ(taken, 1);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        auto const byte = static_cast<unsigned char>(whole[at]);
        for (int const value : {0, 1, 4, 0x7f, 0x80, 0xff, byte + 1, byte - 1, byte ^ 0x10}) {
            std::string changed = whole;
            changed[at] = static_cast<char>(value);
            if (changed != whole)
                read(changed);
        }
    }
    EXPECT_GT(refused, 1);
}

TEST_P(BrokenPicturesTest, NoCutHurtsTheProcess)
{
    for (std::size_t size = 0; size <= GetParam().bytes.size(); ++size)
        read(GetParam().bytes.substr(0, size));
    EXPECT_GE(taken, 1);
    EXPECT_GT(refused, 1);
}

INSTANTIATE_TEST_SUITE_P(Picture, BrokenPicturesTest, testing::ValuesIn(MadePictures::all()),
                         [](auto const& picture) { return MadePictures::nameOfTest(picture.param); });
