// Trees of databases in parts, with each program that converts.

#include "Converter.h"
#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "support/Text.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>

namespace
{

namespace fs = std::filesystem;

class ConversionParts : public testing::TestWithParam<Converter>
{
protected:
    void database(std::string const& name, std::vector<std::string> const& references = {}) const
    {
        static_cast<void>(folder.write("tree/" + name, SmallDatabase{references, "", 0}.bytes()));
    }

    /// A tree with two levels of directories.
    void tiles(int count) const
    {
        for (int i = 0; i < count; ++i)
            database("row" + std::to_string(i % 5) + "/tile" + std::to_string(i) + ".flt");
    }

    ProgramRun run(std::string const& arguments) const { return ProgramRun(GetParam().program, arguments); }

    /// Converts the tree into a directory.
    ProgramRun convert(std::string const& out, std::string const& options = "") const
    {
        return run("-q " + options + " -o " + (folder / out) + "/ " + (folder / "tree"));
    }

    /// All files below a directory by their places.
    std::map<std::string, std::string> filesIn(std::string const& directory) const
    {
        std::map<std::string, std::string> files;
        std::error_code ignored;
        for (fs::directory_entry const& file : fs::recursive_directory_iterator(folder / directory, ignored))
            if (file.is_regular_file())
                files[file.path().lexically_relative(folder / directory).string()] = contentsOf(file.path());
        return files;
    }

    std::string result(std::string const& name) const { return name + GetParam().ending; }

    ScratchFolder folder;
};

} // namespace

TEST_P(ConversionParts, makeTheTreeTogetherAndNoFileTwice)
{
    tiles(30);
    EXPECT_EQ(convert("whole").exitCode, 0);
    auto const whole = filesIn("whole");
    EXPECT_EQ(whole.size(), 30U);
    for (int const parts : {1, 2, 7, 40}) {
        std::map<std::string, std::string> together;
        for (int part = 0; part < parts; ++part) {
            std::string const out = "parts" + std::to_string(parts) + "_" + std::to_string(part);
            ProgramRun const one =
                convert(out, "--shard " + std::to_string(part) + "/" + std::to_string(parts));
            EXPECT_EQ(one.exitCode, 0) << one.errors;
            for (auto const& [place, bytes] : filesIn(out))
                EXPECT_TRUE(together.emplace(place, bytes).second) << place << " is in two of " << parts;
        }
        EXPECT_EQ(together, whole) << parts;
    }
}

TEST_P(ConversionParts, areTheSameWhenFilesAreAdded)
{
    tiles(30);
    EXPECT_EQ(convert("before", "--shard 1/3").exitCode, 0);
    for (int i = 0; i < 10; ++i)
        database("new/added" + std::to_string(i) + ".flt");
    EXPECT_EQ(convert("after", "--shard 1/3").exitCode, 0);
    auto after = filesIn("after");
    for (auto const& [place, bytes] : filesIn("before"))
        EXPECT_EQ(after.erase(place), 1U) << place;
    for (auto const& [place, bytes] : after)
        EXPECT_EQ(place.find("new/"), 0U) << place;
}

TEST_P(ConversionParts, haveNothingToDoIfTheyAreEmpty)
{
    database("a.flt");
    int converted = 0;
    for (int part = 0; part < 5; ++part) {
        ProgramRun const one =
            run("--shard " + std::to_string(part) + "/5 -o " + (folder / "out/") + " " + (folder / "tree"));
        EXPECT_EQ(one.exitCode, 0) << one.errors;
        converted += holds(one.output, "1 of 1 databases converted") ? 1 : 0;
        EXPECT_TRUE(holds(one.output, " databases converted\n")) << one.output;
    }
    EXPECT_EQ(converted, 1);
}

TEST_P(ConversionParts, ofAListKeepTheirPlaces)
{
    tiles(10);
    std::string const list =
        folder.write("list", "tree/row0/tile0.flt\n" + (folder / "tree/row1/tile1.flt") + "\n");
    ProgramRun const one =
        run("--files-from " + list + " --root " + (folder / "") + " -o " + (folder / "out"));
    EXPECT_EQ(one.exitCode, 0) << one.errors;
    EXPECT_EQ(one.output, "2 of 2 databases converted\n");
    EXPECT_EQ(filesIn("out").count(result("tree/row0/tile0")), 1U);
    EXPECT_EQ(filesIn("out").count(result("tree/row1/tile1")), 1U);
}

TEST_P(ConversionParts, ofAListOnStandardInputCountFromThePresentDirectory)
{
    tiles(10);
    std::string const command = "cd '" + (folder / "tree") + "' && find . -name '*.flt' -print0 | " +
                                VELLOREADER_PROGRAMS + GetParam().program + " -q --files-from - -o " +
                                (folder / "out");
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(filesIn("out").size(), 10U);
    EXPECT_EQ(filesIn("out").count(result("row4/tile4")), 1U);
}

TEST_P(ConversionParts, ofSeveralDirectoriesKeepTheirPlacesBelowARoot)
{
    database("north/a.flt");
    database("south/a.flt");
    std::string const both = (folder / "tree/north") + " " + (folder / "tree/south");
    EXPECT_EQ(run("-o " + (folder / "out") + " " + both).exitCode, 2) << "would both become one file";
    ProgramRun const rooted = run("-o " + (folder / "out") + " --root " + (folder / "tree") + " " + both);
    EXPECT_EQ(rooted.exitCode, 0) << rooted.errors;
    EXPECT_EQ(filesIn("out").size(), 2U);
    EXPECT_EQ(filesIn("out").count(result("south/a")), 1U);
}

TEST_P(ConversionParts, nameWhatLiesOutsideOfTheRoot)
{
    database("a.flt");
    std::string const outside = folder.write("outside.flt", SmallDatabase().bytes());
    ProgramRun const some = run("--root " + (folder / "tree") + " -o " + (folder / "out") + " " + outside +
                                " " + (folder / "tree"));
    EXPECT_EQ(some.exitCode, 1);
    EXPECT_TRUE(holds(some.errors, outside + ": lies outside of " + (folder / "tree"))) << some.errors;
    EXPECT_EQ(filesIn("out").size(), 1U);
}

TEST_P(ConversionParts, convertAReferencedDatabaseOnceHoweverManyReferToIt)
{
    database("library/tree.flt");
    for (int i = 0; i < 12; ++i)
        database("tile" + std::to_string(i) + ".flt", {"library/tree.flt"});
    database("x/circle.flt", {"../y/circle.flt"});
    database("y/circle.flt", {"../x/circle.flt"});
    EXPECT_EQ(convert("whole", "--xref file").exitCode, 0);
    std::map<std::string, std::string> together;
    for (int part = 0; part < 4; ++part) {
        std::string const out = "part" + std::to_string(part);
        ProgramRun const one = convert(out, "--xref file --shard " + std::to_string(part) + "/4");
        EXPECT_EQ(one.exitCode, 0) << one.errors;
        for (auto const& [place, bytes] : filesIn(out))
            EXPECT_TRUE(together.emplace(place, bytes).second) << place;
    }
    EXPECT_EQ(together, filesIn("whole"));
    EXPECT_EQ(together.size(), 15U);
    EXPECT_TRUE(holds(together[result("tile0")], result("library/tree")));
}

TEST_P(ConversionParts, nameReferencedDatabasesThatNoPartConverts)
{
    static_cast<void>(folder.write("shared/tree.flt", SmallDatabase().bytes()));
    for (int i = 0; i < 4; ++i)
        database("tile" + std::to_string(i) + ".flt", {"../shared/tree.flt"});
    ProgramRun const one =
        run("--xref file --root " + (folder / "tree") + " -o " + (folder / "out") + " " + (folder / "tree"));
    EXPECT_EQ(one.exitCode, 0);
    EXPECT_TRUE(holds(one.errors, "shared/tree.flt: isn't among the databases of this run")) << one.errors;
    EXPECT_TRUE(holds(one.errors, "needed by 4 databases, first by " + (folder / "tree/tile0.flt")))
        << one.errors;
    EXPECT_EQ(filesIn("out").size(), 4U);
}

TEST_P(ConversionParts, arePlannedWithoutAConversion)
{
    tiles(30);
    ProgramRun const plan = run("--plan 3 " + (folder / "tree"));
    EXPECT_EQ(plan.exitCode, 0) << plan.errors;
    EXPECT_EQ(plan.output.find("30 databases, "), 0U) << plan.output;
    EXPECT_TRUE(holds(plan.output, "in 3 parts\n")) << plan.output;
    EXPECT_EQ(run("--plan 0 " + (folder / "tree")).exitCode, 2);
}

TEST_P(ConversionParts, needADirectoryToGoToAndAnInput)
{
    database("a.flt");
    std::string const tree = folder / "tree";
    for (std::string const& wrong : {"--shard 0/2 " + tree, "--root " + tree + " " + tree,
                                     "--shard 0/2 -o " + (folder / result("x")) + " " + tree,
                                     "--shard 2/2 -o " + (folder / "out/") + " " + tree,
                                     "--root " + (folder / "no") + " -o " + (folder / "out/") + " " + tree,
                                     "-o " + (folder / "out/"), std::string("--shard 0/2 -o - ") + tree}) {
        ProgramRun const refused = run(wrong);
        EXPECT_EQ(refused.exitCode, 2) << wrong << "\n" << refused.errors;
        EXPECT_EQ(refused.output, "") << wrong;
    }
    EXPECT_EQ(run("--files-from " + (folder / "no") + " -o " + (folder / "out/")).exitCode, 1);
    EXPECT_FALSE(fs::exists(folder / "out"));
}

INSTANTIATE_TEST_SUITE_P(Each, ConversionParts, Converter::each(), Converter::nameOf);
