#include "ProgramRun.h"
#include "messages/FltText.h"
#include "support/FaultyDatabases.h"
#include "support/MadeAttributes.h"
#include "support/PseudoTerminal.h"
#include "support/Text.h"
#include "writer/EveryRecord.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace
{

using Json = nlohmann::json;

class Fltinfo : public testing::Test
{
protected:
    /// A database with a switch, a level of detail, a texture that is there and one that isn't, and a
    /// reference.
    std::string town()
    {
        faultlessDatabase().save(folder.path("sub/tower.flt"));
        static_cast<void>(folder.write("tree.rgb", "pixels"));
        FltWriter flt(1570, {{"id", "town"}, {"vertexCoordinateUnits", 4}, {"originLatitude", 48.5}});
        flt.add("TexturePattern", {{"fileName", "tree.rgb"}, {"patternIndex", 0}});
        flt.add("TexturePattern", {{"fileName", "gone.rgb"}, {"patternIndex", 1}});
        flt.add("Material", {{"index", 3}, {"name", "brick"}});
        flt.vertexPalette();
        double const a = flt.vertex("VertexColor", 0, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0),
                     c = flt.vertex("VertexColor", 0, 1, 0);
        flt.push().add("LOD", {{"idASCII", "near"}, {"switchInDistance", 250.5}}).push();
        flt.add("Object", {{"idASCII", "house"}}).push().face({a, b, c}, {{"materialIndex", 3}}).pop().pop();
        flt.add("Switch", {{"idASCII", "lamp"},
                           {"indexOfCurrentMask", 1},
                           {"numberOfMasks", 2},
                           {"numberOf32BitWordsPerMask", 1},
                           {"masks", {1, 2}}})
            .push();
        flt.add("Group", {{"idASCII", "off"}}).add("Group", {{"idASCII", "on"}}).pop();
        flt.add("ExternalReference", {{"asciiPath", "sub/tower.flt"}}).pop().save(folder / "town.flt");
        return folder / "town.flt";
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(Fltinfo, saysWhatADatabaseHolds)
{
    ProgramRun const run("fltinfo", town());
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    for (char const* const line :
         {"  name                town\n", "  units               feet\n",
          "  origin              48.5 N, 0 E\n", "  faces               1\n", "  triangles           1\n",
          "  vertices            3  colour\n", "  near                from 0 to 250.5, around  0  0  0\n",
          "  lamp                mask 1 of 2, 2 children\n", "                        mask 0 shows 0\n",
          "                      * mask 1 shows 1\n", "  3                   brick, used 1 time\n",
          "  box, size           1  1  0\n"})
        EXPECT_TRUE(holds(run.output, line)) << line << run.output;
    EXPECT_TRUE(
        holds(run.output, "  tree.rgb (not used)\n                      found " + (folder / "tree.rgb")));
    EXPECT_TRUE(holds(run.output, "  gone.rgb (not used)\n                      missing\n"));
    EXPECT_TRUE(
        holds(run.output, "  sub/tower.flt\n                      found " + (folder / "sub/tower.flt")));
}

TEST_F(Fltinfo, writesNoFileAndNoColourIntoAPipe)
{
    ProgramRun const run("fltinfo", town());
    EXPECT_FALSE(holds(run.output, "\x1b"));
    std::size_t files = 0;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder / ""))
        files += entry.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 3U);
}

TEST_F(Fltinfo, coloursOnRequest)
{
    EXPECT_TRUE(holds(ProgramRun("fltinfo", "--color always " + town()).output, "\x1b[1mGeometry\x1b[0m"));
    EXPECT_EQ(ProgramRun("fltinfo", "--color sometimes " + town()).exitCode, 2);
}

TEST_F(Fltinfo, coloursATerminalUnlessNoColorIsSet)
{
    if (std::string const reason = PseudoTerminal::whyNot(); !reason.empty())
        GTEST_SKIP() << reason;
    std::string const file = town();
    auto const onTerminal = [&](std::string const& environment) {
        std::string const command = environment + " " + VELLOREADER_PROGRAMS + "fltinfo --fast " + file;
        static_cast<void>(std::system(
            ("TERM=xterm script -qec '" + command + "' " + (folder / "typed") + " >/dev/null").c_str()));
        return contentsOf(folder / "typed");
    };
    EXPECT_TRUE(holds(onTerminal(""), "\x1b[1mGeometry"));
    EXPECT_FALSE(holds(onTerminal("NO_COLOR=1"), "\x1b[1mGeometry"));
    EXPECT_TRUE(holds(onTerminal("NO_COLOR=1"), "Geometry"));
}

TEST_F(Fltinfo, leavesOutTheSceneWhenFast)
{
    ProgramRun const run("fltinfo", "--fast " + town());
    EXPECT_FALSE(holds(run.output, "\nScene\n"));
    EXPECT_TRUE(holds(run.output, "\nGeometry\n"));
}

TEST_F(Fltinfo, drawsTheTreeDownToADepth)
{
    std::string const file = town();
    EXPECT_EQ(ProgramRun("fltinfo", "--tree 1 " + file).output,
              "header town  1.5 kB\n"
              "  level of detail near  220 bytes, 1 child\n"
              "  switch lamp  108 bytes, 2 children\n"
              "  external reference sub/tower.flt  216 bytes\n");
    EXPECT_EQ(ProgramRun("fltinfo", "--tree=1 " + file).output,
              ProgramRun("fltinfo", "--tree 1 " + file).output);
    EXPECT_TRUE(holds(ProgramRun("fltinfo", "--tree " + file).output, "\n    object house  "));
}

TEST_F(Fltinfo, printsRecordsAsJsonOneALine)
{
    std::string const file = town();
    std::string const lods = ProgramRun("fltinfo", "--records 73 " + file).output;
    EXPECT_EQ(std::count(lods.begin(), lods.end(), '\n'), 1);
    EXPECT_EQ(Json::parse(lods)["fields"]["switchInDistance"], 250.5);
    std::string const all = ProgramRun("fltinfo", "--records " + file).output;
    EXPECT_EQ(Json::parse(all.substr(0, all.find('\n')))["class"], "FltRecordHeader");
    EXPECT_GT(std::count(all.begin(), all.end(), '\n'), 20);
}

TEST_F(Fltinfo, listsTheFilesThatADatabaseNeeds)
{
    std::string const file = town();
    ProgramRun const run("fltinfo", "--deps " + file);
    EXPECT_EQ(run.output, file + "\n" + (folder / "tree.rgb") + "\n" + (folder / "sub/tower.flt") + "\n");
    EXPECT_EQ(run.errors, "fltinfo: warning: " + file + ": texture gone.rgb is missing\n");
    EXPECT_EQ(ProgramRun("fltinfo", "-q --deps " + file).errors, "");
}

TEST_F(Fltinfo, writesARuleForMake)
{
    std::string const file = town();
    std::string const rule =
        file + ": \\\n  " + (folder / "tree.rgb") + " \\\n  " + (folder / "sub/tower.flt") + "\n";
    EXPECT_EQ(ProgramRun("fltinfo", "-q --deps=make " + file).output, rule);
    EXPECT_EQ(ProgramRun("fltinfo", "-q --deps make " + file).output, rule);
}

TEST_F(Fltinfo, showsNamesOfStrangersWithoutControls)
{
    // In UTF-8, and in eight bits of another character set.
    for (std::string const& control : {std::string("\u009b"), std::string("\x9b"), std::string("\u202e")}) {
        std::string const name = "t" + control + "31m";
        FltWriter flt;
        flt.add("TexturePattern", {{"fileName", name + ".rgb"}, {"patternIndex", 1}});
        flt.push().add("Group").add("LongID", {{"idASCII", name}}).pop();
        std::string const file = folder.write(name + ".flt", flt.bytes());
        static_cast<void>(folder.write(name + ".rgb", "pixels"));
        for (char const* const options : {"", "--deps", "--deps=make", "--tree", "--records", "--json",
                                          "--deps --json", "-v --tree --json"}) {
            ProgramRun const run("fltinfo", std::string(options) + " " + file);
            std::string const all = run.output + run.errors;
            EXPECT_TRUE(holds(all, "t\\") || holds(all, "\ufffd")) << options << all;
            EXPECT_EQ(FltText::printable(all, true), all) << options;
        }
    }
}

TEST_F(Fltinfo, keepsNamesOutOfARuleThatMakeWouldTakeForCommands)
{
    for (char const* const name : {"a;touch pwned.rgb", "SHELL=x.rgb", "a:b.rgb", "a\nall:.rgb"}) {
        FltWriter flt;
        flt.add("TexturePattern", {{"fileName", name}, {"patternIndex", 1}});
        std::string const file = folder.write("a.flt", flt.bytes());
        static_cast<void>(folder.write(name, "pixels"));
        ProgramRun const run("fltinfo", "--deps=make " + file);
        EXPECT_EQ(run.output, file + ":\n");
        EXPECT_TRUE(holds(run.errors, "make knows no such name")) << run.errors;
    }
}

TEST_F(Fltinfo, findsTexturesInGivenDirectories)
{
    std::string const file = town();
    static_cast<void>(folder.write("textures/gone.rgb", "pixels"));
    ProgramRun const run("fltinfo", "--deps --texture-path " + (folder / "textures") + " " + file);
    EXPECT_EQ(run.errors, "");
    EXPECT_TRUE(holds(run.output, folder / "textures/gone.rgb"));
}

TEST_F(Fltinfo, listsTheAttributesOfTextures)
{
    std::string const file = town();
    folder.write("tree.rgb.attr", madeAttributes({{28, 6}, {32, 1}, {36, 1}, {40, 3}, {44, 4}, {60, 9}}));
    EXPECT_TRUE(holds(ProgramRun("fltinfo", file).output,
                      "attributes " + (folder / "tree.rgb.attr") +
                          ": clamp, mirror in v; modulate; mipmap trilinear, bilinear where it is larger\n"));
    Json const textures =
        Json::parse(ProgramRun("fltinfo", "-q --deps --json " + file).output)["files"]["textures"];
    Json const expected = {{"path", folder / "tree.rgb.attr"},
                           {"wrapU", "clamp"},
                           {"wrapV", "mirror"},
                           {"environment", "modulate"},
                           {"minification", "mipmap trilinear"},
                           {"magnification", "bilinear"},
                           {"problems", {"its environment is 9"}}};
    EXPECT_EQ(textures[0]["attributes"], expected);
    EXPECT_EQ(textures[1]["attributes"], nullptr);
}

TEST_F(Fltinfo, saysEverythingAsJson)
{
    Json const info = Json::parse(ProgramRun("fltinfo", "--json " + town()).output);
    for (char const* const key :
         {"file", "bytes", "recordCount", "isDamaged", "header", "geometry", "nodeCount", "levelsOfDetail",
          "switches", "degreesOfFreedom", "instanceDefinitions", "instanceReferences", "lightSources",
          "materials", "lights", "textures", "references", "scene", "records"})
        EXPECT_TRUE(info.contains(key)) << key;
    EXPECT_EQ(info["header"]["units"], "feet");
    EXPECT_EQ(info["geometry"]["vertices"]["colour"], 3);
    EXPECT_EQ(info["switches"][0]["masks"], Json::parse("[[1], [2]]"));
    EXPECT_EQ(info["levelsOfDetail"][0]["switchIn"], 250.5);
    EXPECT_EQ(info["textures"][1]["path"], nullptr);
    EXPECT_EQ(info["references"][0]["state"], "found");
    EXPECT_NEAR(info["scene"]["box"]["greatest"][0], 1, 1e-6);
    EXPECT_GT(info["scene"]["bytes"], 0);
}

TEST_F(Fltinfo, tellsTheBoxOfAFarDatabaseAsItIs)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 4'500'000.3, 5'300'000.7, 0),
                 b = flt.vertex("VertexColor", 4'500'002.3, 5'300'000.7, 0),
                 c = flt.vertex("VertexColor", 4'500'000.3, 5'300'002.7, 0);
    flt.push().add("Object").push().face({a, b, c}).pop().pop();
    Json const box = Json::parse(
        ProgramRun("fltinfo", "--json " + folder.write("far.flt", flt.bytes())).output)["scene"]["box"];
    EXPECT_NEAR(box["least"][0], 4'500'000.3, 1e-6);
    EXPECT_NEAR(box["greatest"][1], 5'300'002.7, 1e-6);
}

TEST_F(Fltinfo, makesAListOfSeveralFilesAsJson)
{
    std::string const file = town();
    EXPECT_EQ(Json::parse(ProgramRun("fltinfo", "--fast --json " + file + " " + file).output).size(), 2U);
    EXPECT_EQ(Json::parse(ProgramRun("fltinfo", "--tree --json " + file).output)["nodes"].size(), 7U);
    EXPECT_EQ(
        Json::parse(ProgramRun("fltinfo", "-q --deps --json " + file).output)["files"]["textures"].size(),
        2U);
}

TEST_F(Fltinfo, describesTheOtherFilesWhenOneCantBeRead)
{
    ProgramRun const run("fltinfo", "--fast " + (folder / "missing.flt") + " " + town());
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.output, "  name                town\n"));
    EXPECT_EQ(run.errors,
              "fltinfo: " + (folder / "missing.flt") +
                  ": cannot open: No such file or directory. Check the name and its permissions.\n");
}

TEST_F(Fltinfo, describesWhatIsLeftOfADamagedFile)
{
    std::string const bytes = everyRecordInBrief(1570).bytes();
    ProgramRun const run("fltinfo", folder.write("cut.flt", bytes.substr(0, bytes.size() / 2)));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(holds(run.output, "  damaged             from byte offset "));
}

TEST_F(Fltinfo, showsControlCharactersOfNamesAsText)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "a\x1b[31m"}}).pop().save(folder / "evil.flt");
    ProgramRun const run("fltinfo", "--tree " + (folder / "evil.flt"));
    EXPECT_FALSE(holds(run.output, "\x1b"));
    EXPECT_TRUE(holds(run.output, "group a\\x1b[31m"));
    EXPECT_EQ(ProgramRun("fltinfo", "--json " + (folder / "evil.flt")).exitCode, 0);
}

TEST_F(Fltinfo, saysTheMostImportantInALineAFile)
{
    std::string const file = town();
    std::string const cut = folder.write("cut.flt", contentsOf(file).substr(0, 400));
    ProgramRun const run("fltinfo", "--brief " + file + " " + cut);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output,
              file +
                  ": revision 1570, feet, 3 vertices, 1 face, 1 triangle, 1 texture missing, 1 x 1 x 0 m\n" +
                  cut +
                  ": revision 1570, feet, 0 vertices, 0 faces, 0 triangles, 0 textures missing, "
                  "nothing to be seen, damaged\n");
    std::filesystem::remove(folder / "sub/tower.flt");
    EXPECT_EQ(ProgramRun("fltinfo", "--brief --fast " + file).output,
              file + ": revision 1570, feet, 3 vertices, 1 face, 1 triangle, 1 texture missing, "
                     "1 reference missing\n");
    EXPECT_EQ(ProgramRun("fltinfo", "--brief --json " + file).exitCode, 2);
}

TEST_F(Fltinfo, describesAllDatabasesOfADirectoryAndBelowIt)
{
    std::string const file = town();
    ProgramRun const run("fltinfo", "--brief --fast " + (folder / ""));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 2);
    EXPECT_LT(run.output.find("town.flt: revision"), run.output.find("sub/tower.flt: revision"));
    EXPECT_EQ(Json::parse(ProgramRun("fltinfo", "--json --fast " + (folder / "sub")).output).size(), 1U)
        << "a list, however many there are";
    std::filesystem::remove_all(folder / "sub");
    std::filesystem::create_directories(folder / "sub");
    ProgramRun const none("fltinfo", "--fast " + (folder / "sub") + " " + file);
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(holds(none.errors, "holds no database")) << none.errors;
    EXPECT_TRUE(holds(none.output, "town"));
}

TEST_F(Fltinfo, namesUsedMaterialsFirstAndTheSumsOfLists)
{
    FltWriter flt;
    for (int index = 0; index < 40; ++index)
        flt.add("Material", {{"index", index}, {"name", "m" + std::to_string(index)}});
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0),
                 c = flt.vertex("VertexColorNormal", 0, 1, 0);
    flt.push().add("Object").push().face({a, b, c}, {{"materialIndex", 33}}).pop().pop();
    flt.save(folder / "a.flt");
    std::string const output = ProgramRun("fltinfo", "--fast " + (folder / "a.flt")).output;
    EXPECT_TRUE(holds(output, "\nMaterials: 40, 39 not used\n  33                  m33, used 1 time\n"
                              "  0                   m0, used 0 times\n"))
        << output;
    EXPECT_TRUE(holds(output, "  vertices            3\n                      2  colour\n"
                              "                      1  colour and normal\n"))
        << output;
    std::string const lists = ProgramRun("fltinfo", "--fast " + town()).output;
    for (char const* const heading : {"\nTextures: 2, 1 missing, 2 not used\n", "\nExternal references: 1\n",
                                      "\nSwitches: 1\n", "\nLevels of detail: 1\n", "\nMaterials: 1\n"})
        EXPECT_TRUE(holds(lists, heading)) << heading << lists;
}

TEST_F(Fltinfo, saysTheLastChangeWithoutTheEndOfItsLine)
{
    FltWriter(1570, {{"lastRevisionDateTime", "Tue Mar  4 10:20:30 1997\n"}}).save(folder / "a.flt");
    EXPECT_TRUE(holds(ProgramRun("fltinfo", "--fast " + (folder / "a.flt")).output,
                      "  last change         Tue Mar  4 10:20:30 1997\n"));
    EXPECT_EQ(
        Json::parse(
            ProgramRun("fltinfo", "--json --fast " + (folder / "a.flt")).output)["header"]["lastChange"],
        "Tue Mar  4 10:20:30 1997");
}

TEST_F(Fltinfo, printsEachOfVeryManyRecordsOnce)
{
    constexpr int groups = 2000;
    FltWriter flt;
    for (int i = 0; i < groups; ++i)
        flt.add("Group", {{"idASCII", "g" + std::to_string(i)}});
    flt.save(folder / "a.flt");
    std::istringstream lines(ProgramRun("fltinfo", "--records 2 " + (folder / "a.flt")).output);
    int i = 0;
    for (std::string line; std::getline(lines, line); ++i)
        ASSERT_EQ(Json::parse(line)["fields"]["idASCII"], "g" + std::to_string(i));
    EXPECT_EQ(i, groups);
}

TEST_F(Fltinfo, saysWhichOpcodesThereAreForOneThatIsNot)
{
    FltWriter().push().add("Group").pop().save(folder / "a.flt");
    ProgramRun const run("fltinfo", "--records 9999 " + (folder / "a.flt"));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "fltinfo: warning: --records 9999: no record has this opcode. There are 1, 2, 10, 11\n");
    EXPECT_EQ(ProgramRun("fltinfo", "--records 2 " + (folder / "a.flt")).errors, "");
}

TEST_F(Fltinfo, refusesValuesThatItDoesNotKnow)
{
    std::string const file = town();
    for (char const* const option : {"--records=LOD", "--tree=all-of-it", "--deps=cmake"}) {
        ProgramRun const run("fltinfo", std::string(option) + " " + file);
        EXPECT_EQ(run.exitCode, 2) << option;
        EXPECT_EQ(run.output, "") << option;
        EXPECT_TRUE(holds(run.errors, ": give ")) << run.errors;
    }
}

TEST_F(Fltinfo, countsFacesAndTrianglesAsOtherProgramsDo)
{
    std::string const sample = folder / "airfield.flt";
    ASSERT_EQ(ProgramRun("make_sample", sample).exitCode, 0);
    std::string const files = sample + " " + (folder / "airfield/terminal.flt");
    Json const info = Json::parse(ProgramRun("fltinfo", "--json " + files).output);
    for (char const* const what : {"faces", "triangles"})
        EXPECT_EQ(info[0]["scene"][what],
                  info[0]["geometry"][what].get<int>() + info[1]["geometry"][what].get<int>())
            << "the airfield has the terminal in it: " << what;
    std::string const table = ProgramRun("flt2iv", "--stat -o " + (folder / "a.iv") + " " + sample).output;
    std::istringstream words(table.substr(table.find('\n') + 1));
    std::string nodes, faces, triangles;
    words >> nodes >> faces >> triangles;
    auto const plain = [](std::string text) {
        text.erase(std::remove(text.begin(), text.end(), ','), text.end());
        return std::stoi(text);
    };
    EXPECT_EQ(plain(nodes), info[0]["scene"]["nodes"]);
    EXPECT_EQ(plain(faces), info[0]["scene"]["faces"]);
    EXPECT_EQ(plain(triangles), info[0]["scene"]["triangles"]);
}
