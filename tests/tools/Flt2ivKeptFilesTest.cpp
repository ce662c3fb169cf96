// What databases of a run refer to is never an output of flt2iv, whoever refers to it.

#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "support/SmallPictures.h"
#include "support/Text.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

class Flt2ivKeptFiles : public testing::Test
{
protected:
    std::string database(std::string const& name, SmallDatabase const& small = {}) const
    {
        return folder.write(name, small.bytes());
    }

    std::string picture(std::string const& name) const { return folder.write(name, image); }

    /// Converts all in the folder into a directory below it, several at a time.
    ProgramRun run(std::string const& options = "", std::string const& out = ".") const
    {
        return ProgramRun("flt2iv", "--jobs 3 " + options + " -o " + (folder / out) + " " + (folder / "."));
    }

    /// Expects that a picture is still there, and was reported.
    void expectKept(ProgramRun const& all, std::string const& file, std::string const& reason) const
    {
        EXPECT_EQ(all.exitCode, 1);
        EXPECT_TRUE(holds(all.errors, file + ": the output would replace " + reason)) << all.errors;
        EXPECT_TRUE(holds(all.errors, "Choose another place for it with -o.")) << all.errors;
        EXPECT_EQ(contentsOf(file), image);
    }

    std::string const image = SmallPictures::plainSgi(4);
    ScratchFolder folder;
};

} // namespace

TEST_F(Flt2ivKeptFiles, aTextureOfADatabaseThatIsConvertedLater)
{
    database("a.flt");
    database("y.flt");
    database("z.flt", {{}, "y.iv", 0});
    std::string const texture = picture("y.iv");
    ProgramRun const all = run();
    expectKept(all, folder / "./y.iv", "a texture of " + (folder / "./z.flt"));
    EXPECT_TRUE(holds(all.errors, "flt2iv: 2 of 3 databases converted\n"));
    EXPECT_EQ(trianglesIn(folder / "a.iv"), 1);
    EXPECT_EQ(trianglesIn(folder / "z.iv"), 1);
}

TEST_F(Flt2ivKeptFiles, underEveryOption)
{
    database("x.flt", {{}, "y.iv", 0});
    database("y.flt");
    picture("y.iv");
    for (std::string const options :
         {"--if-newer", "--xref file", "--xref skip", "--exact", "--embed-textures", "--log", "-b -z"}) {
        SCOPED_TRACE(options);
        fs::last_write_time(folder / "y.flt", fs::file_time_type::clock::now());
        expectKept(run(options), folder / "./y.iv", "a texture of ");
        expectKept(run(options), folder / "./y.iv", "a texture of ");
    }
}

TEST_F(Flt2ivKeptFiles, aTextureThatNoFaceShowsOrNobodyCanDecode)
{
    FltWriter unused(1570);
    unused.add("TexturePattern", {{"fileName", "y.iv"}, {"patternIndex", 7}});
    static_cast<void>(folder.write("x.flt", unused.bytes()));
    database("y.flt");
    picture("y.iv");
    expectKept(run(), folder / "./y.iv", "a texture of ");
    database("x.flt", {{}, "y.iv", 0});
    static_cast<void>(folder.write("y.iv", "a picture by a secret rule"));
    EXPECT_EQ(run().exitCode, 1);
    EXPECT_EQ(contentsOf(folder / "y.iv"), "a picture by a secret rule");
}

TEST_F(Flt2ivKeptFiles, aTextureFoundByATailOrInAnotherDirectory)
{
    database("x.flt", {{}, "C:\\art\\Textures\\Y.IV", 0});
    database("textures/y.flt");
    picture("textures/y.iv");
    expectKept(run(), folder / "./textures/y.iv", "a texture of ");
    database("x.flt", {{}, "far.iv", 0});
    database("models/far.flt");
    picture("elsewhere/far.iv");
    expectKept(ProgramRun("flt2iv", "--texture-path " + (folder / "elsewhere") + " -o " +
                                        (folder / "elsewhere") + " " + (folder / "x.flt") + " " +
                                        (folder / "models")),
               folder / "elsewhere/far.iv", "a texture of " + (folder / "x.flt"));
}

TEST_F(Flt2ivKeptFiles, aTextureOfADatabaseBehindAReferenceFromTheFirstOnesDirectory)
{
    database("top.flt", {{"library/middle.flt"}, "", 0});
    database("library/middle.flt", {{"deep/end.flt"}, "", 0});
    database("library/deep/end.flt", {{}, "y.iv", 0});
    database("y.flt");
    picture("y.iv");
    expectKept(
        ProgramRun("flt2iv", "-o " + (folder / ".") + " " + (folder / "y.flt") + " " + (folder / "top.flt")),
        folder / "./y.iv", "a texture of ");
}

TEST_F(Flt2ivKeptFiles, aReferenceWithTheNameOfAResult)
{
    database("x.flt", {{"y.iv"}, "", 0});
    database("y.flt");
    std::string const reference = database("y.iv");
    ProgramRun const all = run();
    EXPECT_EQ(all.exitCode, 1);
    EXPECT_TRUE(holds(all.errors,
                      "y.iv: the output would replace a file that " + (folder / "./x.flt") + " refers to"))
        << all.errors;
    EXPECT_EQ(contentsOf(reference), SmallDatabase().bytes());
    EXPECT_EQ(trianglesIn(folder / "x.iv"), 2);
}

TEST_F(Flt2ivKeptFiles, byLinksAndOtherNames)
{
    database("models/x.flt", {{}, "tree.rgb", 0});
    for (char const* const name : {"models/soft.flt", "models/hard.flt", "models/plain.flt"})
        database(name);
    std::string const tree = picture("models/tree.rgb");
    static_cast<void>(folder.path("out/x.iv"));
    fs::create_symlink("../models/tree.rgb", folder / "out/soft.iv");
    fs::create_hard_link(tree, folder / "out/hard.iv");
    ProgramRun const all("flt2iv", "-o " + (folder / "out") + " " + (folder / "models"));
    expectKept(all, folder / "out/soft.iv", "a texture of ");
    expectKept(all, folder / "out/hard.iv", "a texture of ");
    EXPECT_TRUE(fs::is_symlink(folder / "out/soft.iv"));
    EXPECT_TRUE(holds(all.errors, "flt2iv: 2 of 4 databases converted\n"));
}

TEST_F(Flt2ivKeptFiles, aDatabaseByAHardLinkAndALogByALink)
{
    std::string const first = database("models/a.flt");
    database("models/b.flt");
    EXPECT_EQ(ProgramRun("flt2iv", "--log -o " + folder.path("out/a.iv") + " " + first).exitCode, 0);
    std::string const log = contentsOf(first + ".log");
    fs::create_symlink("../models/a.flt.log", folder / "out/b.iv");
    ProgramRun const logged("flt2iv", "--log -o " + (folder / "out") + " " + (folder / "models"));
    EXPECT_TRUE(holds(logged.errors, "the output would replace the log of " + first)) << logged.errors;
    EXPECT_EQ(contentsOf(first + ".log"), log);
    fs::remove(folder / "out/b.iv");
    fs::create_hard_link(first, folder / "out/b.iv");
    ProgramRun const linked("flt2iv", "-o " + (folder / "out") + " " + (folder / "models"));
    EXPECT_TRUE(holds(linked.errors, "the output would replace the database " + first)) << linked.errors;
    EXPECT_EQ(contentsOf(folder / "out/b.iv"), SmallDatabase().bytes());
}

TEST_F(Flt2ivKeptFiles, aTextureAfterADamagedPlaceAndOneWhoseIndexReturns)
{
    FltWriter twice(1570);
    for (char const* const name : {"y.iv", "other.rgb"})
        twice.add("TexturePattern", {{"fileName", name}, {"patternIndex", 0}});
    static_cast<void>(folder.write("x.flt", twice.bytes() + "more"));
    database("y.flt");
    picture("y.iv");
    expectKept(run(), folder / "./y.iv", "a texture of ");
}

TEST_F(Flt2ivKeptFiles, aSingleDatabasesTextureThatNoFaceShows)
{
    FltWriter unused(1570);
    unused.add("TexturePattern", {{"fileName", "y.iv"}, {"patternIndex", 7}});
    std::string const input = folder.write("x.flt", unused.bytes());
    std::string const texture = picture("y.iv");
    ProgramRun const one("flt2iv", "-o " + texture + " " + input);
    EXPECT_EQ(one.exitCode, 2);
    EXPECT_EQ(one.errors, "flt2iv: " + texture + ": the output would replace a texture of " + input +
                              ". Choose another place for it with -o.\n");
    EXPECT_EQ(contentsOf(texture), image);
}

TEST_F(Flt2ivKeptFiles, aFileOfReferencesNamesNoResultThatIsNotMade)
{
    database("x.flt", {{"y.flt"}, "y.iv", 0});
    database("y.flt");
    picture("y.iv");
    ProgramRun const all = run("--xref file");
    expectKept(all, folder / "./y.iv", "a texture of ");
    EXPECT_TRUE(holds(all.errors, "1 reference is left out")) << all.errors;
    EXPECT_FALSE(holds(contentsOf(folder / "x.iv"), "File {"));
}

TEST_F(Flt2ivKeptFiles, replacesResultsOfEarlierRuns)
{
    database("x.flt", {{"y.flt"}, "y.iv", 0});
    database("y.flt");
    EXPECT_EQ(run("-q").exitCode, 0) << "no y.iv that could be lost";
    EXPECT_EQ(trianglesIn(folder / "x.iv"), 2);
    fs::remove(folder / "y.iv");
    picture("y.rgb");
    database("x.flt", {{"y.flt"}, "y.rgb", 0});
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(run().output, "2 of 2 databases converted\n");
}
