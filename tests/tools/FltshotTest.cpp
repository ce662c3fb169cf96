#include "FltshotFixture.h"
#include "support/FileSizeLimit.h"

#include <filesystem>

using Fltshot = FltshotFixture;

TEST_F(Fltshot, drawsThePictureInTheAskedSize)
{
    ProgramRun const run("fltshot", square(255, 0, 0) + " -o " + (directory / "o.png") + " --size 160x90");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    ShotFile const shot(directory / "o.png");
    EXPECT_EQ(shot.width, 160u);
    EXPECT_EQ(shot.height, 90u);
}

TEST_F(Fltshot, drawsAFaceFromAboveInItsColor)
{
    ProgramRun const run("fltshot",
                         square(0, 200, 0) + " -o " + (directory / "o.png") + " --size 64x64 --from 180,90");
    ASSERT_EQ(run.exitCode, 0);
    ShotFile const shot(directory / "o.png");
    ASSERT_EQ(shot.width, 64u);
    auto const [red, green, blue] = shot.at(32, 32);
    EXPECT_EQ(red, 0);
    EXPECT_GT(green, 100);
    EXPECT_EQ(blue, 0);
}

TEST_F(Fltshot, drawsNorthAtTheTopAndEastOnTheRightFromAbove)
{
    ShotFile const shot = shoot(directions(), "--from 180,90");
    ShotFile::Patch const east = shot.patchOf(0), north = shot.patchOf(1), middle = shot.patchOf(2);
    EXPECT_GT(std::min({east.pixels, north.pixels, middle.pixels}), 50);
    EXPECT_NEAR(north.x, middle.x, 2);
    EXPECT_LT(north.y, middle.y - 20);
    EXPECT_GT(east.x, middle.x + 20);
    EXPECT_NEAR(east.y, middle.y, 2);
}

TEST_F(Fltshot, drawsWhatAViewerInTheEastSees)
{
    ShotFile const shot = shoot(directions(), "--from 90,45");
    ShotFile::Patch const east = shot.patchOf(0), north = shot.patchOf(1), middle = shot.patchOf(2);
    EXPECT_GT(std::min({east.pixels, north.pixels, middle.pixels}), 50);
    EXPECT_GT(east.pixels, middle.pixels) << "the east is nearest";
    EXPECT_GT(east.y, middle.y + 15);
    EXPECT_GT(north.x, middle.x + 20);
}

TEST_F(Fltshot, drawsWhatAViewerInTheNorthSees)
{
    ShotFile const shot = shoot(directions(), "--from 0,45");
    ShotFile::Patch const east = shot.patchOf(0), north = shot.patchOf(1), middle = shot.patchOf(2);
    EXPECT_GT(std::min({east.pixels, north.pixels, middle.pixels}), 50);
    EXPECT_GT(north.y, middle.y + 15) << "the north is nearest";
    EXPECT_LT(east.x, middle.x - 20);
}

TEST_F(Fltshot, comesNearerWithZoomAndGoesFartherWithLessThanOne)
{
    std::string const database = square(0, 255, 0);
    auto const pixelsAt = [&](std::string const& zoom) {
        ProgramRun const run("fltshot", database + " -o " + (directory / "o.png") +
                                            " --size 96x96 --from 180,90 --zoom " + zoom);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return ShotFile(directory / "o.png").patchOf(1).pixels;
    };
    int const plain = pixelsAt("1");
    EXPECT_GT(plain, 5000) << "nearly the whole picture";
    EXPECT_NEAR(pixelsAt("0.5"), plain / 4.0, plain * 0.03);
    EXPECT_EQ(pixelsAt("2"), 96 * 96);
}

TEST_F(Fltshot, leavesNoHalfOfAPictureOnAFullDisk)
{
    ASSERT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
    FileSizeLimit const full(4096);
    ProgramRun const run("fltshot",
                         (directory / "airfield.flt") + " -o " + (directory / "o.png") + " --size 320x180");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("cannot write: "), std::string::npos) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(directory / "o.png"));
}

TEST_F(Fltshot, drawsTheSampleInManyColors)
{
    ASSERT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
    ProgramRun const run("fltshot", (directory / "airfield.flt") + " -o " + (directory / "airfield.png") +
                                        " --size 320x180");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_GT(ShotFile(directory / "airfield.png").countColors(), 5000u);
}

TEST_F(Fltshot, exitsWith1ForAFileThatIsNotThere)
{
    ProgramRun const run("fltshot", (directory / "missing.flt") + " -o " + (directory / "o.png"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("cannot open: No such file or directory"), std::string::npos);
    EXPECT_EQ(contentsOf(directory / "o.png"), "");
}

TEST_F(Fltshot, exitsWith1ForAPictureThatCanNotBeWritten)
{
    ProgramRun const run("fltshot", square(1, 2, 3) + " --size 16x16 -o " + (directory / "no/o.png"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("cannot write: No such file or directory"), std::string::npos);
}

TEST_F(Fltshot, exitsWith2ForWrongUsage)
{
    std::string const good = square(1, 2, 3) + " -o " + (directory / "o.png");
    EXPECT_EQ(ProgramRun("fltshot", "").exitCode, 2);
    EXPECT_EQ(ProgramRun("fltshot", square(1, 2, 3)).exitCode, 2);
    for (char const* wrong : {"--size 0x5",
                              "--size 64",
                              "--size 64x64x",
                              "--size 9999x10",
                              "--from 1",
                              "--from up,1",
                              "--from nan,1",
                              "--from 1,91",
                              "--zoom 0",
                              "--view below",
                              "--view top --from 1,2",
                              "--view top --view front",
                              "--eye 1,2,3 --view top",
                              "--eye 1,2",
                              "--eye 1,2,3 --from 1,2",
                              "--eye 1,2,3 --fit o0",
                              "--eye 1,nan,3",
                              "--fit o0 --look-at o0",
                              "--background sand",
                              "--background white,",
                              "--background '#12345'",
                              "--transparent --background red",
                              "--columns 0",
                              "--columns x",
                              "--thumbnail 0",
                              "--thumbnail 9999",
                              "--thumbnail 64 --size 32x32",
                              "--thumbnail 64 --columns 2",
                              "--lod some",
                              "--transparent -o a.jpg"})
        EXPECT_EQ(ProgramRun("fltshot", good + " " + wrong).exitCode, 2) << wrong;
    EXPECT_EQ(contentsOf(directory / "o.png"), "");
}

TEST_F(Fltshot, refusesToReplaceItsInputAndEndingsThatItCannotWrite)
{
    std::string const file = square(1, 2, 3);
    std::string const before = contentsOf(file);
    std::filesystem::create_hard_link(file, directory / "same.png");
    for (std::string const& output : {file, directory / "same.png", directory / "a.gif"})
        EXPECT_EQ(ProgramRun("fltshot", file + " --size 16x16 -o " + output).exitCode, 2) << output;
    EXPECT_EQ(contentsOf(file), before);
    EXPECT_FALSE(std::filesystem::exists(directory / "a.gif"));
}

TEST_F(Fltshot, writesToStandardOutputAndLeavesDevicesWhereTheyAre)
{
    std::string const file = square(1, 2, 3);
    ProgramRun const run("fltshot", file + " --size 16x16 -o -");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.output.substr(1, 3), "PNG");
    EXPECT_EQ(ProgramRun("fltshot", file + " --size 16x16 -o /dev/full").exitCode, 1);
    EXPECT_EQ(ProgramRun("fltshot", file + " --size 16x16 -o /dev/null").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}
