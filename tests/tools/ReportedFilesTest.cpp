// Results of several files, and what another run with a report does when one of them is gone.

#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "WrittenReport.h"
#include "support/SmallPictures.h"
#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

/// A program with options, and the endings of the files that stand beside each result.
struct Form {
    char const* name;
    char const* program;
    char const* options;
    std::set<std::string> besides;
};

class ReportedFiles : public testing::TestWithParam<Form>
{
protected:
    ReportedFiles()
    {
        static_cast<void>(folder.write("tree/tree.rgb", SmallPictures::plainSgi(4)));
        for (char const* const name : {"a", "b"})
            static_cast<void>(folder.write(std::string("tree/") + name + ".flt", database().pop().bytes()));
    }

    /// A triangle with a texture, in two levels of detail.
    static FltWriter database()
    {
        FltWriter flt(1570, {{"projectionType", 5}});
        flt.add("TexturePattern", {{"fileName", "tree.rgb"}, {"patternIndex", 0}});
        flt.vertexPalette();
        double const a = flt.vertex("VertexColorUv", 9, 47, 0), b = flt.vertex("VertexColorUv", 9.01, 47, 0),
                     c = flt.vertex("VertexColorUv", 9, 47.01, 0);
        flt.push();
        for (double const nearest : {0.0, 200.0})
            flt.add("LOD", {{"switchInDistance", nearest + 200}, {"switchOutDistance", nearest}})
                .push()
                .add("Object")
                .push()
                .face({a, b, c}, {{"texturePatternIndex", 0}, {"materialIndex", -1}})
                .pop()
                .pop();
        return flt;
    }

    ProgramRun run() const
    {
        return ProgramRun(GetParam().program, std::string(GetParam().options) + " --report " + path + " -o " +
                                                  (folder / "out/") + " " + (folder / "tree"));
    }

    /// All that belongs to results but the results themselves.
    std::map<std::string, std::string> besides() const
    {
        std::set<std::string> results;
        for (ReportLine const& line : WrittenReport(contentsOf(path)).lines)
            results.insert(line.output);
        std::map<std::string, std::string> files;
        for (fs::directory_entry const& file : fs::recursive_directory_iterator(folder / "out")) {
            std::string const place = file.path().lexically_relative(folder / "out").string();
            if (file.is_regular_file() && results.count(place) == 0 && place != "tileset.json")
                files[place] = contentsOf(file.path());
        }
        return files;
    }

    ScratchFolder folder;
    std::string const path = folder / "report.jsonl";
    std::string const nothingToDo = "0 of 2 databases converted, 2 up to date\n";
};

std::string withoutFilesBeside(std::string text)
{
    for (std::size_t begin = 0; (begin = text.find("\"beside\":")) != std::string::npos;)
        text.erase(begin, text.find("\"needs\"", begin) - begin);
    return text;
}

} // namespace

TEST_P(ReportedFiles, areNamedWithTheirSizes)
{
    ASSERT_EQ(run().exitCode, 0);
    std::map<std::string, std::string> const there = besides();
    std::map<std::string, std::uint64_t> named;
    std::set<std::string> endings;
    WrittenReport const report = WrittenReport(contentsOf(path));
    ASSERT_EQ(report.lines.size(), 2U);
    for (ReportLine const& line : report.lines) {
        ASSERT_TRUE(line.facts.beside);
        EXPECT_FALSE(line.facts.beside->empty());
        for (ConversionFacts::File const& file : *line.facts.beside)
            named[file.path] = file.bytes;
    }
    for (auto const& [name, bytes] : there) {
        EXPECT_EQ(named[name], bytes.size()) << name;
        endings.insert(
            name.substr(name.find('.', name.rfind('/') == std::string::npos ? 0 : name.rfind('/'))));
    }
    EXPECT_EQ(named.size(), there.size());
    EXPECT_EQ(endings, GetParam().besides);
}

TEST_P(ReportedFiles, areMadeAnewWhereOneIsGoneOrOfAnotherSize)
{
    ASSERT_EQ(run().exitCode, 0);
    EXPECT_EQ(run().output, nothingToDo);
    std::map<std::string, std::string> const whole = besides();
    ASSERT_FALSE(whole.empty());
    for (auto const& [name, bytes] : whole) {
        std::string const file = folder / ("out/" + name);
        bool const isShared = name.rfind("textures/", 0) == 0;
        std::string const made =
            isShared ? "2 of 2 databases converted\n" : "1 of 2 databases converted, 1 up to date\n";
        fs::remove(file);
        EXPECT_EQ(run().output, made) << name;
        EXPECT_EQ(besides(), whole) << name;
        fs::resize_file(file, bytes.size() - 1);
        EXPECT_EQ(run().output, made) << name;
        EXPECT_EQ(besides(), whole) << name;
    }
    EXPECT_EQ(run().output, nothingToDo);
}

TEST_P(ReportedFiles, areNotKnownFromReportsOfBefore)
{
    ASSERT_EQ(run().exitCode, 0);
    std::string const before = withoutFilesBeside(contentsOf(path));
    ASSERT_EQ(WrittenReport(before).lines.size(), 2U);
    EXPECT_EQ(WrittenReport(before).torn, 0U);
    static_cast<void>(folder.write("report.jsonl", before));
    EXPECT_EQ(ProgramRun("fltreport", path).exitCode, 0);
    EXPECT_EQ(run().output, "2 of 2 databases converted\n");
    EXPECT_EQ(run().output, nothingToDo);
}

INSTANTIATE_TEST_SUITE_P(
    Each, ReportedFiles,
    testing::Values(Form{"glb", "flt2gltf", "", {".png"}},
                    Form{"gltf", "flt2gltf", "--to gltf", {".bin", ".png"}},
                    Form{"obj", "flt2gltf", "--to obj", {".mtl", ".png"}},
                    Form{"split", "flt2gltf", "--lod split", {".1.glb", ".png"}},
                    Form{"tileset", "flt2gltf", "--tileset --lod split", {".1.glb", ".png"}},
                    Form{"wrl", "flt2iv", "--to wrl", {".png"}}),
    [](testing::TestParamInfo<Form> const& one) { return one.param.name; });

namespace
{

class ReportOfSingleFiles : public ReportedFiles
{
};

} // namespace

TEST_P(ReportOfSingleFiles, stillHoldsIfItIsOfBefore)
{
    ASSERT_EQ(run().exitCode, 0);
    static_cast<void>(folder.write("report.jsonl", withoutFilesBeside(contentsOf(path))));
    EXPECT_EQ(run().output, nothingToDo);
    EXPECT_TRUE(besides().empty());
}

INSTANTIATE_TEST_SUITE_P(Each, ReportOfSingleFiles,
                         testing::Values(Form{"html", "flt2gltf", "--to html", {}},
                                         Form{"iv", "flt2iv", "", {}}),
                         [](testing::TestParamInfo<Form> const& one) { return one.param.name; });

namespace
{

class CoarserFiles : public ReportedFiles
{
};

} // namespace

TEST_P(CoarserFiles, leaveNothingOfAKilledRunBehind)
{
    ASSERT_EQ(run().exitCode, 0);
    pid_t const dead = ::fork();
    if (dead == 0)
        ::_exit(0);
    ::waitpid(dead, nullptr, 0);
    std::string const mine = "-" + std::to_string(::getpid()) + "-";
    for (char const* const name : {"out/a.1.glb", "out/tileset.json"}) {
        // As it is left where the disk knows no files without names.
        std::string left = TemporaryName::beside(folder / name);
        left.replace(left.find(mine), mine.size(), "-" + std::to_string(dead) + "-");
        static_cast<void>(folder.write(left.substr((folder / "").size()), "half"));
    }
    ASSERT_EQ(run().exitCode, 0);
    for (fs::directory_entry const& file : fs::directory_iterator(folder / "out"))
        EXPECT_NE(file.path().extension(), ".part") << file.path();
}

INSTANTIATE_TEST_SUITE_P(Each, CoarserFiles,
                         testing::Values(Form{"tileset", "flt2gltf", "--tileset --lod split", {}}),
                         [](testing::TestParamInfo<Form> const& one) { return one.param.name; });
