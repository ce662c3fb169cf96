// Draws a small database of each feature, and compares the picture with the one that was looked at and kept.

#include "pictures/PictureDatabases.h"
#include "tools/ProgramRun.h"
#include "tools/ShotFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

constexpr unsigned width = 240, height = 135;

bool hasTheRightSize(ShotFile const& picture)
{
    return picture.width == width && picture.height == height;
}

/// The mean difference of two pictures in their worst square of 15 by 15 pixels, from 0 to 255: a thing that
/// is missing counts in full where it was, however small it is.
double worstMeanError(ShotFile const& one, ShotFile const& other)
{
    constexpr unsigned side = 15;
    double worst = 0;
    for (unsigned top = 0; top < height; top += side)
        for (unsigned left = 0; left < width; left += side) {
            double sum = 0;
            for (unsigned y = top; y < top + side; ++y)
                for (unsigned x = left; x < left + side; ++x)
                    for (std::size_t channel = 0; channel < 3; ++channel)
                        sum += std::abs(one.at(x, y)[channel] - other.at(x, y)[channel]);
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
    ShotFile const now(drawn);
    ASSERT_TRUE(hasTheRightSize(now));

    // With a folder in this variable the pictures are left there, to be looked at and kept.
    if (char const* const wanted = std::getenv("VELLOREADER_NEW_PICTURES"))
        std::filesystem::copy_file(drawn, std::string(wanted) + "/" + GetParam().name + ".png",
                                   std::filesystem::copy_options::overwrite_existing);

    ShotFile const kept(VELLOREADER_KEPT_PICTURES + GetParam().name + ".png");
    ASSERT_TRUE(hasTheRightSize(kept)) << "no picture is kept";
    EXPECT_LT(worstMeanError(now, kept), 8.0);
}

INSTANTIATE_TEST_SUITE_P(Each, KeptPictures, testing::ValuesIn(pictureDatabases()),
                         [](auto const& instance) { return instance.param.name; });
