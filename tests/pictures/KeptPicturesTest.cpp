// Draws a small database of each feature, and compares the picture with the one that was looked at and kept.

#include "pictures/PictureDatabases.h"
#include "pictures/PictureDifference.h"
#include "tools/ProgramRun.h"

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

class KeptPictures : public testing::TestWithParam<PictureDatabase>
{
protected:
    void draw(std::string const& moreOptions = "")
    {
        GetParam().write(folder);
        ProgramRun const run("fltshot", GetParam().options + moreOptions + " --size " +
                                            std::to_string(width) + "x" + std::to_string(height) + " -q -o " +
                                            drawn + " " + (folder / "model.flt"));
        ASSERT_EQ(run.exitCode, 0) << run.errors;
    }

    void expectTheKeptPicture() const
    {
        ShotFile const now(drawn);
        ASSERT_TRUE(hasTheRightSize(now));
        ShotFile const kept(VELLOREADER_KEPT_PICTURES + GetParam().name + ".png");
        ASSERT_TRUE(hasTheRightSize(kept)) << "no picture is kept";
        EXPECT_LT(PictureDifference::worstMean(now, kept), 8.0);
    }

    ScratchFolder folder;
    std::string const drawn = folder / "drawn.png";
};

} // namespace

TEST_P(KeptPictures, ShowWhatIsStillDrawn)
{
    ASSERT_NO_FATAL_FAILURE(draw());

    // With a folder in this variable the pictures are left there, to be looked at and kept.
    if (char const* const wanted = std::getenv("VELLOREADER_NEW_PICTURES"))
        std::filesystem::copy_file(drawn, std::string(wanted) + "/" + GetParam().name + ".png",
                                   std::filesystem::copy_options::overwrite_existing);
    expectTheKeptPicture();
}

TEST_P(KeptPictures, ShowWhatIsDrawnOfMergedShapesToo)
{
    ASSERT_NO_FATAL_FAILURE(draw(" --merge"));
    expectTheKeptPicture();
}

INSTANTIATE_TEST_SUITE_P(Each, KeptPictures, testing::ValuesIn(pictureDatabases()),
                         [](auto const& instance) { return instance.param.name; });
