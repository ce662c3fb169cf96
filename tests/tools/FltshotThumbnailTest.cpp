// Pictures for file managers.

#include "FltshotFixture.h"
#include "support/DeepChain.h"
#include "support/SmallPictures.h"

#include <filesystem>

class FltshotThumbnail : public FltshotFixture
{
protected:
    /// A database that shows a file of squares by reference.
    std::string referring(std::string const& to, std::string const& name) const
    {
        FltWriter flt;
        flt.push().add("ExternalReference", {{"asciiPath", to}}).pop().save(directory.path(name));
        return directory / name;
    }

    ProgramRun thumbnail(std::string const& database) const
    {
        return {"fltshot", "--thumbnail 64 -o " + output + " " + database};
    }
};

TEST_F(FltshotThumbnail, isASquareOfTheAskedSize)
{
    ProgramRun const run = thumbnail(sample());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    ShotFile const shot(output);
    EXPECT_EQ(shot.width, 64U);
    EXPECT_EQ(shot.height, 64U);
    EXPECT_GT(shot.countColors(), 500U);
}

TEST_F(FltshotThumbnail, showsTexturesAndPartsInTheFolderOfTheDatabase)
{
    static_cast<void>(squares({{0, 0, red}}, "home/parts/part.flt"));
    ASSERT_EQ(thumbnail(referring("parts/part.flt", "home/a.flt")).exitCode, 0);
    EXPECT_GT(ShotFile(output).patchOf(0).pixels, 200);
}

TEST_F(FltshotThumbnail, showsTheUpperFilesOfAChainThatIsTooDeep)
{
    DeepChain const chain(32, 200);
    ProgramRun const run = thumbnail(chain.first());
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_GT(ShotFile(output).countColors(), 1U);
}

TEST_F(FltshotThumbnail, readsNothingOutsideOfTheFolderOfTheDatabase)
{
    std::string const outside = squares({{0, 0, red}}, "outside.flt");
    std::filesystem::create_directories(directory / "home");
    std::filesystem::create_symlink(outside, directory / "home/link.flt");
    for (std::string const& name : {std::string("../outside.flt"), std::string("link.flt"), outside}) {
        std::string const database = referring(name, "home/a.flt");
        ProgramRun const run = thumbnail(database);
        EXPECT_EQ(run.exitCode, 1) << name;
        EXPECT_TRUE(holds(run.errors, "An external file is left out, because it isn't below")) << run.errors;
        EXPECT_EQ(contentsOf(output), "");
        EXPECT_EQ(ProgramRun("fltshot", database + " --size 64x64 -o " + (directory / "all.png")).exitCode,
                  0);
    }
}

TEST_F(FltshotThumbnail, findsTheFolderOfADatabaseWithoutOneInItsName)
{
    static_cast<void>(squares({{0, 0, red}}, "outside.flt"));
    static_cast<void>(referring("../outside.flt", "home/a.flt"));
    std::string const command = "cd " + (directory / "home") +
                                " && " VELLOREADER_PROGRAMS "fltshot -q --thumbnail 32 a.flt -o " + output +
                                " 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
}

TEST_F(FltshotThumbnail, readsNoHugeDatabase)
{
    std::string const database = square(255, 0, 0);
    std::filesystem::resize_file(database, std::uintmax_t{300} << 20);
    ProgramRun const run = thumbnail(database);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.errors, "more than")) << run.errors;
}

TEST_F(FltshotThumbnail, endsInOrderForATextureThatNeedsTooMuchMemory)
{
    std::string const database = sample();
    std::string image = SmallPictures::plainSgi(8);
    for (std::size_t const side : {6U, 7U, 8U, 9U})
        image[side] = '\xea'; // 60138 pixels
    static_cast<void>(directory.write("airfield/corrugation.rgb", image));
    ProgramRun const run = thumbnail(database);
    EXPECT_TRUE(run.exitCode == 0 || run.exitCode == 1) << run.exitCode;
    EXPECT_EQ(contentsOf(output).empty(), run.exitCode == 1);
    EXPECT_NE(run.errors, "");
}

TEST_F(FltshotThumbnail, isWhatTheEntryForFileManagersAsksFor)
{
    std::string const entry = contentsOf(VELLOREADER_SHARE "thumbnailers/velloreader.thumbnailer");
    std::size_t const begin = entry.find("Exec=fltshot ") + 13;
    std::string arguments = entry.substr(begin, entry.find('\n', begin) - begin);
    for (auto const& [field, value] :
         {std::pair<std::string, std::string>{"%s", "48"}, {"%i", square(255, 0, 0)}, {"%o", output}})
        arguments.replace(arguments.find(field), 2, value);
    ProgramRun const run("fltshot", arguments);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(ShotFile(output).width, 48U);
}
