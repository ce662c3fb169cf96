// Several databases on one sheet.

#include "FltshotFixture.h"

#include <filesystem>

class FltshotSheet : public FltshotFixture
{
protected:
    /// @param arguments after those for small pictures from above
    ProgramRun run(std::string const& arguments) const
    {
        return {"fltshot", arguments + " --view top --size 100x60 -o " + output};
    }

    std::string const redFile = squares({{0, 0, red}}, "red.flt");
    std::string const greenFile = squares({{0, 0, green}}, "green.flt");
    std::string const blueFile = squares({{0, 0, blue}}, "blue.flt");
    std::string const all = redFile + " " + greenFile + " " + blueFile;
};

TEST_F(FltshotSheet, hasThePicturesInOrder)
{
    ProgramRun const done = run(all);
    EXPECT_EQ(done.exitCode, 0);
    EXPECT_EQ(done.errors, "");
    ShotFile const sheet(output);
    EXPECT_EQ(sheet.width, 12 + 2 * 112U);
    EXPECT_EQ(sheet.height, 12 + 2 * 92U);
    EXPECT_LT(sheet.patchOf(0).x, sheet.patchOf(1).x - 90);
    EXPECT_NEAR(sheet.patchOf(0).y, sheet.patchOf(1).y, 1);
    EXPECT_GT(sheet.patchOf(2).y, sheet.patchOf(0).y + 80);
}

TEST_F(FltshotSheet, hasTheNamesBelowThePictures)
{
    ASSERT_EQ(run(all).exitCode, 0);
    ShotFile const sheet(output);
    int dark = 0;
    for (unsigned y = 76; y < 92; ++y)
        for (unsigned x = 12; x < 112; ++x)
            dark += sheet.at(x, y)[0] < 120 ? 1 : 0;
    EXPECT_GT(dark, 40);
    EXPECT_LT(dark, 600);
    EXPECT_NEAR(sheet.meanOf(124, 168, 100, 16)[0], 250, 0.1) << "there is no fourth name";
}

TEST_F(FltshotSheet, hasAsManyColumnsAsAskedFor)
{
    ASSERT_EQ(run(all + " --columns 3").exitCode, 0);
    EXPECT_EQ(ShotFile(output).width, 12 + 3 * 112U);
    ASSERT_EQ(run(all + " --columns 50").exitCode, 0);
    EXPECT_EQ(ShotFile(output).width, 12 + 3 * 112U);
    ASSERT_EQ(run(redFile + " --columns 4").exitCode, 0);
    EXPECT_EQ(ShotFile(output).height, 12 + 92U) << "one picture has a name too";
}

TEST_F(FltshotSheet, saysInItsPlaceWhyADatabaseIsNotDrawn)
{
    std::string const broken = directory.write("broken.flt", "nonsense");
    ProgramRun const done = run(redFile + " " + broken + " " + directory / "missing.flt" + " " + blueFile);
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_TRUE(holds(done.errors, "broken.flt: not an OpenFlight database")) << done.errors;
    EXPECT_TRUE(holds(done.errors, "missing.flt: cannot open")) << done.errors;
    ShotFile const sheet(output);
    ASSERT_EQ(sheet.width, 12 + 2 * 112U);
    EXPECT_GT(sheet.patchOf(0).pixels, 1000);
    EXPECT_GT(sheet.patchOf(2).pixels, 1000) << "those after it are drawn";
    int red = 0;
    for (unsigned y = 12; y < 72; ++y)
        for (unsigned x = 124; x < 224; ++x)
            red += sheet.at(x, y)[0] > sheet.at(x, y)[1] + 40 ? 1 : 0;
    EXPECT_GT(red, 60) << "the reason in red letters";
    EXPECT_EQ(sheet.at(125, 13), (std::array<int, 3>{228, 228, 230}));
}

TEST_F(FltshotSheet, canBeTransparent)
{
    ASSERT_EQ(run(all + " --transparent --zoom 0.5").exitCode, 0);
    ShotFile const sheet(output);
    EXPECT_TRUE(sheet.hasAlpha);
    EXPECT_EQ(sheet.alphaAt(0, 0), 0);
    EXPECT_EQ(sheet.alphaAt(62, 42), 255);
}

TEST_F(FltshotSheet, isRefusedIfItWouldBeTooLarge)
{
    std::string many;
    for (int i = 0; i < 9; ++i)
        many += redFile + " ";
    EXPECT_TRUE(holds(errorOf(many + "--size 4000x4000", 2), "Give a smaller --size"));
}

TEST_F(FltshotSheet, writesAListingBesideEachDatabaseAndNotIntoOneFile)
{
    EXPECT_EQ(run(all + " --log").exitCode, 0);
    EXPECT_NE(contentsOf(greenFile + ".log"), "");
    std::filesystem::remove(output);
    EXPECT_EQ(run(all + " --log=" + (directory / "all.log")).exitCode, 2);
    EXPECT_FALSE(std::filesystem::exists(directory / "all.log"));
    EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(FltshotSheet, neverReplacesOneOfItsDatabases)
{
    std::string const broken = directory.write("broken.png", "nonsense");
    EXPECT_EQ(ProgramRun("fltshot", redFile + " " + broken + " -o " + broken).exitCode, 2);
    EXPECT_EQ(contentsOf(broken), "nonsense");
    std::filesystem::create_hard_link(blueFile, directory / "link.png");
    EXPECT_EQ(ProgramRun("fltshot", redFile + " " + blueFile + " -o " + (directory / "link.png")).exitCode,
              2);
}

TEST_F(FltshotSheet, takesAllDatabasesOfADirectory)
{
    ASSERT_EQ(run(directory / "").exitCode, 0);
    ShotFile const sheet(output);
    EXPECT_EQ(sheet.width, 12 + 2 * 112U);
    EXPECT_LT(sheet.patchOf(2).x, sheet.patchOf(1).x - 90) << "by name: blue, green, red";
    std::filesystem::remove(output);
    std::string const alone = squares({{0, 0, red}}, "alone/red.flt");
    ASSERT_EQ(run(directory / "alone").exitCode, 0);
    EXPECT_EQ(ShotFile(output).height, 12 + 92U) << "a sheet, however many there are";
    std::filesystem::remove(alone);
    ProgramRun const none = run(directory / "alone");
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(holds(none.errors, "alone: holds no database")) << none.errors;
}

TEST_F(FltshotSheet, keepsAPictureThatIsThereWithNoClobber)
{
    static_cast<void>(directory.write("o.png", "mine"));
    ProgramRun const kept = run("--no-clobber " + all);
    EXPECT_EQ(kept.exitCode, 1);
    EXPECT_TRUE(holds(kept.errors, "--no-clobber keeps it")) << kept.errors;
    EXPECT_EQ(contentsOf(output), "mine");
}

TEST_F(FltshotSheet, saysWhereAPictureBelongs)
{
    ProgramRun const slip("fltshot", redFile + " out.png");
    EXPECT_EQ(slip.exitCode, 2);
    EXPECT_TRUE(holds(slip.errors, "-o OUT.png is required; did you mean -o out.png? Try: ")) << slip.errors;
}
