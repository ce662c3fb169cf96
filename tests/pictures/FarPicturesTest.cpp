// Draws one model at zero, at the coordinates of a map and at geocentric ones: the pictures are the same.

#include "pictures/PictureDatabases.h"
#include "pictures/PictureDifference.h"
#include "tools/ProgramRun.h"

#include <gtest/gtest.h>

namespace
{

ShotFile draw(ScratchFolder const& folder, PictureStage::Place const& at)
{
    writeFarModel(folder, at);
    std::string const drawn = folder / "drawn.png";
    ProgramRun const run("fltshot",
                         "--from 180,15 --size 240x135 -q -o " + drawn + " " + (folder / "model.flt"));
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return ShotFile(drawn);
}

} // namespace

TEST(FarPictures, AreThoseOfTheSameModelAtZero)
{
    ScratchFolder const folder;
    ShotFile const here = draw(folder, {0, 0, 0});
    ASSERT_EQ(here.width, 240U);
    for (PictureStage::Place const& at : {PictureStage::Place{4'500'000.123, 5'300'000.456, 120.789},
                                          {4'027'894.006, 306'123.719, 4'919'499.338}})
        EXPECT_LT(PictureDifference::worstMean(draw(folder, at), here), 8.0) << at[0];
}
