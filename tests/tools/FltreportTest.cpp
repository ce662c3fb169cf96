#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "WrittenReport.h"
#include "support/Text.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace
{

std::size_t countIn(std::string const& text, std::string const& part)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size())
        ++count;
    return count;
}

/// A tile of a kilometre in this column and row.
ReportLine tile(std::string const& input, int column = 0, int row = 0)
{
    ReportLine line;
    line.input = input;
    line.output = input + ".glb";
    line.bytesRead = 1000;
    line.bytesWritten = 2000;
    line.facts.seconds = 0.5;
    line.facts.memory = 3'000'000;
    line.facts.triangles = 7;
    line.facts.box = ConversionFacts::Box{{column * 1000., row * 1000., 0},
                                          {column * 1000. + 1000, row * 1000. + 1000, 50}};
    line.facts.needs = {{"x", {1, 2}}};
    return line;
}

ReportLine failure(std::string const& input)
{
    ReportLine line;
    line.input = input;
    line.exitCode = 1;
    line.problem = input + ": out of luck";
    return line;
}

class Fltreport : public testing::Test
{
protected:
    /// Writes the report of a part.
    /// @param databases that the part has
    std::string report(TreePart part, std::vector<ReportLine> const& lines, std::uint64_t databases,
                       std::string const& options = "") const
    {
        std::string text = ReportRun{"flt2gltf", "1.2.3", options, part, databases}.text();
        for (ReportLine const& line : lines)
            text += line.text();
        return folder.write("r" + std::to_string(part.number) + ".jsonl", text);
    }

    static ProgramRun run(std::string const& arguments) { return ProgramRun("fltreport", arguments); }

    static nlohmann::json json(std::string const& arguments)
    {
        return nlohmann::json::parse(run("--json " + arguments).output);
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(Fltreport, sumsUpAllParts)
{
    std::string const parts = report({0, 2}, {tile("a"), tile("b")}, 2, "--lod all") + " " +
                              report({1, 2}, {tile("c")}, 1, "--lod all");
    ProgramRun const text = run(parts);
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(text.errors, "");
    for (char const* const line :
         {"run          flt2gltf 1.2.3 --lod all\n", "parts        2 of 2\n", "databases    3 converted\n",
          "read         3.0 kB\n", "written      6.0 kB\n", "triangles    21\n", "time of all  1.5 s\n",
          "most memory  3.0 MB\n"})
        EXPECT_TRUE(holds(text.output, line)) << line << text.output;
    nlohmann::json const sums = json(parts)["totals"];
    EXPECT_EQ(sums["converted"], 3);
    EXPECT_EQ(sums["written"], 6000);
    EXPECT_EQ(sums["seconds"], 1.5);
}

TEST_F(Fltreport, tellsWhatIsAbsentOfPartsThatHaveDied)
{
    std::string const dead = report({1, 9}, {tile("a")}, 4), whole = report({4, 9}, {tile("b")}, 1);
    ProgramRun const text = run(dead + " " + whole);
    EXPECT_EQ(text.exitCode, 3);
    EXPECT_TRUE(holds(text.output, "2 converted, 3 absent\n")) << text.output;
    EXPECT_TRUE(holds(text.output, "  part 1/9: 3 of 4 databases absent in " + dead + "\n")) << text.output;
    for (char const* const gap :
         {"  part 0: no report\n", "  parts 2 to 3: no reports\n", "  parts 5 to 8: no reports\n"})
        EXPECT_TRUE(holds(text.output, gap)) << text.output;
    EXPECT_EQ(json(dead + " " + whole)["gaps"], nlohmann::json::parse("[[0,0],[2,3],[5,8]]"));
}

TEST_F(Fltreport, listsTheFailedTheSlowestAndTheLargest)
{
    ReportLine slow = tile("slow"), large = tile("large");
    slow.facts.seconds = 75;
    large.bytesWritten = 9'000'000;
    std::string const file =
        report({0, 1}, {tile("a"), tile("b"), slow, large, failure("z"), failure("y")}, 6);
    ProgramRun const text = run("--most 1 " + file);
    EXPECT_EQ(text.exitCode, 3);
    EXPECT_TRUE(holds(text.output, "\nNot converted\n  y: out of luck\n  and 1 more\n")) << text.output;
    EXPECT_TRUE(holds(text.output, "\nSlowest\n  1 min 15 s  slow\n\n")) << text.output;
    EXPECT_TRUE(holds(text.output, "\nLargest results\n  9.0 MB  large.glb\n")) << text.output;
    nlohmann::json const all = json(file);
    EXPECT_EQ(all["failed"].size(), 2U);
    EXPECT_EQ(all["slowest"].size(), 4U);
    EXPECT_EQ(all["slowest"][0]["input"], "slow");
    EXPECT_EQ(all["largest"][0]["bytes"], 9'000'000);
}

TEST_F(Fltreport, countsTheDatabasesThatAMissingTextureDarkens)
{
    ReportLine first = tile("a"), second = tile("b");
    first.facts.missingTextures = {"rock.rgb", "grass.rgb"};
    second.facts.missingTextures = {"grass.rgb"};
    std::string const file = report({0, 1}, {first, second}, 2);
    EXPECT_TRUE(holds(run(file).output, "  2  grass.rgb\n  1  rock.rgb\n")) << run(file).output;
    EXPECT_EQ(json(file)["missingTextures"][0]["databases"], 2);
}

TEST_F(Fltreport, takesTheLastLineOfADatabaseAndSaysSo)
{
    ProgramRun const text = run(report({0, 2}, {failure("a")}, 1) + " " + report({1, 2}, {tile("a")}, 1));
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_TRUE(holds(text.output, "databases    1 converted\n")) << text.output;
    EXPECT_TRUE(holds(text.errors, "1 database stands in several reports")) << text.errors;
}

TEST_F(Fltreport, saysWhatDoesNotFitTogetherOrIsNotWhole)
{
    std::string const first = report({0, 2}, {tile("a")}, 1), other = report({1, 2}, {}, 0, "--lod all");
    EXPECT_TRUE(holds(run(first + " " + other).errors, other + " is of another run than " + first));
    static_cast<void>(folder.write("r0.jsonl", contentsOf(first) + "{\"input\":\"b\",\"out"));
    EXPECT_TRUE(holds(run(first).errors, "1 line isn't whole, and counted as absent")) << run(first).errors;
}

TEST_F(Fltreport, refusesWhatIsNoReport)
{
    ProgramRun const wrong = run(folder.write("x.jsonl", "{}\n"));
    EXPECT_EQ(wrong.exitCode, 1);
    EXPECT_TRUE(holds(wrong.errors, "this is no report")) << wrong.errors;
    EXPECT_EQ(run(folder / "none.jsonl").exitCode, 1);
    EXPECT_EQ(run(folder / ".").exitCode, 1);
    std::string const file = report({0, 1}, {tile("a")}, 1);
    EXPECT_EQ(run("--json --html " + file).exitCode, 2);
    EXPECT_EQ(run("--most many " + file).exitCode, 2);
    std::string const before = contentsOf(file);
    EXPECT_EQ(run("-o " + file + " " + file).exitCode, 2);
    EXPECT_EQ(contentsOf(file), before);
}

TEST_F(Fltreport, writesAPageThatAsksForNothing)
{
    ReportLine bad = tile("north/b", 1, 0);
    bad.facts.messages = {0, 0, 1};
    std::string const file = report({0, 1}, {tile("north/a"), bad, failure("north/c")}, 4);
    std::string const page = folder / "page.html";
    EXPECT_EQ(run("--html -o " + page + " " + file).exitCode, 3);
    std::string const text = contentsOf(page);
    EXPECT_TRUE(holds(text, "default-src 'none'"));
    for (char const* const word : {"<script", "://", "url(", "@import", "src="})
        EXPECT_FALSE(holds(text, word)) << word;
    EXPECT_EQ(countIn(text, "<rect class=\"a"), 2U) << "a place on the map for each that has one";
    EXPECT_TRUE(holds(text, "c3\" x=\"500\" y=\"0\" width=\"500\" height=\"500\"><title>north/b: 500 ms, "
                            "7 triangles, 1 error</title>"))
        << text;
    EXPECT_EQ(countIn(text, "type=\"radio\""), 3U);
    EXPECT_TRUE(holds(text, "1 of 4 databases absent")) << text;
    EXPECT_TRUE(holds(text, "north/c: out of luck"));
}

TEST_F(Fltreport, takesNoNameForPartOfThePage)
{
    std::string const name = "</title><script>alert(1)</script>&\"'\x01";
    ReportLine line = tile(name);
    line.facts.missingTextures = {name};
    std::string const text = run("--html " + report({0, 1}, {line, failure(name + "2")}, 2, name)).output;
    EXPECT_FALSE(holds(text, "<script"));
    EXPECT_FALSE(holds(text, "\x01"));
    EXPECT_GE(countIn(text, "&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;&amp;&quot;&#39;\\x01"), 5U);
}

TEST_F(Fltreport, putsTilesOfATilesetSideBySide)
{
    std::vector<ReportLine> lines;
    for (int i = 0; i < 3; ++i) { // about their own middles, one a hundredth of a degree north of the other
        lines.push_back(tile("t" + std::to_string(i)));
        lines.back().facts.box = ConversionFacts::Box{{-500, -500, 0}, {500, 500, 50}};
        lines.back().facts.projection = 4;
        lines.back().facts.tile.emplace().place = FltProjection::Place{47 + i * 0.01, 9, 0};
    }
    lines.push_back(tile("model"));
    lines.back().facts.tile.emplace();
    std::string const page = run("--html " + report({}, lines, 4)).output;
    EXPECT_EQ(countIn(page, "<rect class=\"a"), 3U) << "a model has no place";
    EXPECT_TRUE(holds(page, "viewBox=\"0 0 310.3 1000\"")) << page.substr(page.find("viewBox"), 40);
    for (char const* const y : {"y=\"0\"", "y=\"344.", "y=\"689."})
        EXPECT_TRUE(holds(page, y)) << y;
}

TEST_F(Fltreport, putsTilesWhereTheirOriginsAre)
{
    ReportLine south = tile("south"), north = tile("north"), house = tile("house", 7000, 7000);
    south.facts.latitude = 47;
    north.facts.latitude = 47 + 9000. / (40'007'863. / 360); // nine kilometres
    std::string const text = run("--html " + report({0, 1}, {south, north, house}, 3)).output;
    EXPECT_TRUE(holds(text, "y=\"900\" width=\"100\" height=\"100\"><title>south")) << text;
    EXPECT_TRUE(holds(text, "y=\"0\" width=\"100\" height=\"100\"><title>north")) << text;
    EXPECT_FALSE(holds(text, "<title>house")) << "it stands at many places, and has no origin";
    EXPECT_TRUE(holds(text, "1 database has no place"));
}

TEST_F(Fltreport, joinsTilesThatAreTooManyToBeSeen)
{
    std::vector<ReportLine> lines;
    constexpr int side = 160;
    for (int i = 0; i < side * side; ++i)
        lines.push_back(tile("t" + std::to_string(i), i % side, i / side));
    lines.back().facts.box->most = {1e300, 1e300, 0};
    std::string const text = run("--html " + report({0, 1}, lines, lines.size())).output;
    EXPECT_LE(countIn(text, "<rect class=\"a"), 22'500U);
    EXPECT_TRUE(holds(text, "2 databases; the slowest: ")) << "in one cell";
    EXPECT_TRUE(holds(text, "Map of 25,599 databases"));
}

TEST_F(Fltreport, readsWhatRunsHaveWritten)
{
    for (char const* const name : {"tree/a.flt", "tree/b.flt", "tree/c.flt"})
        static_cast<void>(folder.write(name, SmallDatabase({{}, "lost.rgb", 0}).bytes()));
    std::string files;
    for (int part = 0; part < 3; ++part) {
        std::string const file = folder / ("part" + std::to_string(part) + ".jsonl");
        EXPECT_EQ(ProgramRun("flt2gltf", "-q --shard " + std::to_string(part) + "/3 --report " + file +
                                             " -o " + (folder / "out/") + " " + (folder / "tree"))
                      .exitCode,
                  0);
        files += " " + file;
    }
    nlohmann::json const all = json(files);
    EXPECT_EQ(all["program"], "flt2gltf");
    EXPECT_EQ(all["totals"]["converted"], 3);
    EXPECT_EQ(all["totals"]["triangles"], 3);
    EXPECT_EQ(all["missingTextures"][0]["databases"], 3);
    EXPECT_EQ(all["gaps"].size(), 0U);
    EXPECT_EQ(run(files).exitCode, 0);
    EXPECT_EQ(run("--html " + files).exitCode, 0);
}
