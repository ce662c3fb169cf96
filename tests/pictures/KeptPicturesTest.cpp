// Draws a small database of each feature, and compares the picture with the one that was looked at and kept.

#include "pictures/PictureDatabases.h"
#include "tools/ProgramRun.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <png.h>

namespace
{

constexpr unsigned width = 240, height = 135;

/// The colours of a picture, pixel by pixel; empty if the file isn't a picture of the right size.
std::vector<unsigned char> pixelsOf(std::string const& path)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
        return {};
    image.format = PNG_FORMAT_RGB;
    std::vector<unsigned char> pixels(PNG_IMAGE_SIZE(image));
    bool const isRead = png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) != 0;
    return isRead && image.width == width && image.height == height ? pixels : std::vector<unsigned char>{};
}

/// The mean difference of two pictures in their worst square of 15 by 15 pixels, from 0 to 255: a thing that
/// is missing counts in full where it was, however small it is.
double worstMeanError(std::vector<unsigned char> const& one, std::vector<unsigned char> const& other)
{
    constexpr unsigned side = 15;
    double worst = 0;
    for (unsigned top = 0; top < height; top += side)
        for (unsigned left = 0; left < width; left += side) {
            double sum = 0;
            for (unsigned y = top; y < top + side; ++y)
                for (unsigned i = (y * width + left) * 3; i < (y * width + left + side) * 3; ++i)
                    sum += std::abs(one[i] - other[i]);
            worst = std::max(worst, sum / (side * side * 3));
        }
    return worst;
}

class KeptPictures : public testing::TestWithParam<PictureDatabase>
{
protected:
    ScratchFolder folder;
};

} // namespace

TEST_P(KeptPictures, ShowWhatIsStillDrawn)
{
    GetParam().write(folder);
    std::string const drawn = folder / "drawn.png";
    ProgramRun const run("fltshot", GetParam().options + " --size " + std::to_string(width) + "x" +
                                        std::to_string(height) + " -q -o " + drawn + " " +
                                        (folder / "model.flt"));
    ASSERT_EQ(run.exitCode, 0) << run.errors;
    std::vector<unsigned char> const now = pixelsOf(drawn);
    ASSERT_FALSE(now.empty());

    // With a folder in this variable the pictures are left there, to be looked at and kept.
    if (char const* const wanted = std::getenv("VELLOREADER_NEW_PICTURES"))
        std::filesystem::copy_file(drawn, std::string(wanted) + "/" + GetParam().name + ".png",
                                   std::filesystem::copy_options::overwrite_existing);

    std::vector<unsigned char> const kept = pixelsOf(VELLOREADER_KEPT_PICTURES + GetParam().name + ".png");
    ASSERT_FALSE(kept.empty()) << "no picture is kept";
    EXPECT_LT(worstMeanError(now, kept), 8.0);
}

INSTANTIATE_TEST_SUITE_P(Each, KeptPictures, testing::ValuesIn(pictureDatabases()),
                         [](auto const& instance) { return instance.param.name; });
