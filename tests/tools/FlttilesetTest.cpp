#include "ProgramRun.h"
#include "globe/OnEarth.h"
#include "tiles/CheckedTileset.h"
#include "writer/FltWriter.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

namespace fs = std::filesystem;

constexpr double easting = 600000, northing = 5400000, side = 1000;

/// A square of land in UTM, the number of squares to the east of the first one.
FltWriter square(int number, FltWriter::Fields header = {{"projectionType", 4}, {"utmZone", 32}})
{
    FltWriter flt(1580, std::move(header));
    flt.vertexPalette();
    double const west = easting + number * side;
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0.0, 0.0}, {side, 0.0}, {side, side}, {0.0, side}})
        corners.push_back(flt.vertex("VertexColor", west + x, northing + y, 50 + (x + y) / 100));
    flt.push().add("Object").push();
    flt.face(corners, {{"texturePatternIndex", -1}, {"materialIndex", -1}}).pop();
    return flt;
}

/// A model without a place on the globe, in two levels of detail.
FltWriter tree()
{
    FltWriter flt(1580);
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", -1, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0),
                 c = flt.vertex("VertexColor", 0, 0, 9);
    flt.push();
    for (double const nearest : {0.0, 200.0}) {
        flt.add("LOD", {{"switchInDistance", nearest + 200}, {"switchOutDistance", nearest}}).push();
        flt.add("Object")
            .push()
            .face({a, b, c}, {{"texturePatternIndex", -1}, {"materialIndex", -1}})
            .pop()
            .pop();
    }
    flt.pop();
    return flt;
}

class Flttileset : public testing::Test
{
protected:
    Flttileset()
    {
        for (int i = 0; i < 5; ++i)
            save("land/t" + std::to_string(i) + ".flt", square(i).pop());
    }

    void save(std::string const& name, FltWriter const& flt)
    {
        fs::create_directories(fs::path(folder / name).parent_path());
        flt.save(folder / name);
    }

    ProgramRun convert(std::string const& options, std::string const& output) const
    {
        return ProgramRun("flt2gltf", "-q " + options + " -o " + (folder / output) + " " + (folder / "land"));
    }

    CheckedTileset read(std::string const& output) const
    {
        return CheckedTileset(folder / (output + "/tileset.json"));
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(Flttileset, isWrittenOverTheResultsOfARun)
{
    ProgramRun const run = convert("--tileset", "out/");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    CheckedTileset const tileset = read("out");
    ASSERT_EQ(tileset.contents.size(), 5U);
    for (int i = 0; i < 5; ++i) {
        CheckedTileset::Content const& tile = tileset.of("t" + std::to_string(i) + ".glb");
        FltDatabaseInfo info;
        info.projection = 4;
        info.utmZone = 32;
        auto const middle =
            *FltProjection(info).placeOf({easting + (i + 0.5) * side, northing + side / 2, 60});
        SbVec3d const place(tile.matrix[3][0], tile.matrix[3][1], tile.matrix[3][2]);
        EXPECT_LT(
            OnEarth::distance(place, OnEarth::geocentric(middle.latitude, middle.longitude, middle.height)),
            0.01);
    }
}

TEST_F(Flttileset, isTheSameFromTheReportsOfParts)
{
    EXPECT_EQ(convert("--tileset", "out/").exitCode, 0);
    std::string reports;
    for (std::string const part : {"2", "0", "1"}) {
        std::string const report = folder / ("part" + part + ".jsonl");
        EXPECT_EQ(convert("--tileset --shard " + part + "/3 --report " + report, "parts/").exitCode, 0);
        reports += " " + report;
    }
    EXPECT_FALSE(fs::exists(folder / "parts/tileset.json"));
    ProgramRun const run("flttileset", "-o " + (folder / "parts/tileset.json") + reports);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(contentsOf(folder / "parts/tileset.json"), contentsOf(folder / "out/tileset.json"));
}

TEST_F(Flttileset, isTheSameAfterARunThatHasNothingToDo)
{
    EXPECT_EQ(convert("--tileset", "out/").exitCode, 0);
    std::string const before = contentsOf(folder / "out/tileset.json");
    auto const time = fs::last_write_time(folder / "out/t0.glb");
    fs::remove(folder / "out/tileset.json");
    EXPECT_EQ(convert("--tileset", "out/").exitCode, 0);
    EXPECT_EQ(contentsOf(folder / "out/tileset.json"), before);
    EXPECT_EQ(fs::last_write_time(folder / "out/t0.glb"), time);
}

TEST_F(Flttileset, hasModelsWhereTheyAreReferredTo)
{
    save("land/models/tree.flt", tree());
    FltWriter land = square(9);
    for (double const east : {100.0, 700.0})
        land.add("ExternalReference", {{"asciiPath", "models/tree.flt"}})
            .add("Matrix",
                 {{"matrix",
                   {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, easting + 9 * side + east, northing, 50, 1}}});
    save("land/wood.flt", land.pop());
    ProgramRun const run = convert("--tileset --lod split --xref file", "out/");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    CheckedTileset const tileset = read("out");
    EXPECT_EQ(tileset.count("wood.glb"), 1U);
    EXPECT_EQ(tileset.count("models/tree.glb"), 2U);
    EXPECT_EQ(tileset.count("models/tree.1.glb"), 2U);
    SbDPMatrix const& matrix = tileset.of("models/tree.glb").matrix;
    FltDatabaseInfo info;
    info.projection = 4;
    info.utmZone = 32;
    auto const foot = *FltProjection(info).placeOf({easting + 9 * side + 100, northing, 50});
    EXPECT_LT(OnEarth::distance({matrix[3][0], matrix[3][1], matrix[3][2]},
                                OnEarth::geocentric(foot.latitude, foot.longitude, foot.height)),
              0.01);
    SbVec3d const up(matrix[2][0], matrix[2][1], matrix[2][2]);
    EXPECT_GT(up.dot(OnEarth::upAt(foot.latitude, foot.longitude)), 0.999999);
}

TEST_F(Flttileset, isMadeOfASingleDatabaseToo)
{
    ProgramRun const run("flt2gltf",
                         "-q --tileset -o " + (folder / "a.glb") + " " + (folder / "land/t0.flt"));
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(CheckedTileset(folder / "tileset.json").contents.size(), 1U);
}

TEST_F(Flttileset, saysWhichDatabasesAreMissing)
{
    static_cast<void>(folder.write("land/t2.flt", "no database"));
    ProgramRun const run = convert("--tileset", "out/");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("1 database couldn't be converted"), std::string::npos) << run.errors;
    EXPECT_EQ(read("out").contents.size(), 4U);
}

TEST_F(Flttileset, refusesWhatIsNoReport)
{
    ProgramRun const none("flttileset", "-o " + (folder / "tileset.json") + " " + (folder / "land/t0.flt"));
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_NE(none.errors.find("this is no report"), std::string::npos) << none.errors;
    EXPECT_EQ(convert("--report " + (folder / "plain.jsonl"), "plain/").exitCode, 0);
    ProgramRun const plain("flttileset",
                           "-o " + (folder / "plain/tileset.json") + " " + (folder / "plain.jsonl"));
    EXPECT_EQ(plain.exitCode, 1);
    EXPECT_NE(plain.errors.find("tell nothing of tiles"), std::string::npos) << plain.errors;
    EXPECT_FALSE(fs::exists(folder / "plain/tileset.json"));
    EXPECT_EQ(ProgramRun("flttileset", folder / "plain.jsonl").exitCode, 2);
    EXPECT_EQ(ProgramRun("flttileset", "-o a.txt " + (folder / "plain.jsonl")).exitCode, 2);
}

TEST_F(Flttileset, needsGlbFilesWithAPlace)
{
    EXPECT_EQ(convert("--tileset --to gltf", "out/").exitCode, 2);
    EXPECT_EQ(convert("--lod split --to obj", "out/").exitCode, 2);
    EXPECT_EQ(ProgramRun("flt2gltf", "--tileset " + (folder / "land/t0.flt")).exitCode, 2);
    EXPECT_EQ(convert("--tileset --shard 0/2", "out/").exitCode, 2);
    EXPECT_EQ(convert("--tileset --units stored", "out/").exitCode, 2);
}

TEST_F(Flttileset, putsDatabasesOnTheGlobeWithoutATilesetToo)
{
    ProgramRun const run = convert("--globe", "out/");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_FALSE(fs::exists(folder / "out/tileset.json"));
    EXPECT_NE(contentsOf(folder / "out/t0.glb").find("\"globe\":{\"latitude\":48."), std::string::npos);
    save("land/feet.flt",
         square(0, {{"projectionType", 4}, {"utmZone", 32}, {"vertexCoordinateUnits", 4}}).pop());
    ProgramRun const feet("flt2gltf", "--globe --units stored -o " + (folder / "feet.glb") + " " +
                                          (folder / "land/feet.flt"));
    EXPECT_EQ(feet.errors.find("readers take for metres"), std::string::npos) << feet.errors;
    save("land/unknown.flt", square(0, {{"projectionType", 9}}).pop());
    ProgramRun const unknown = convert("--globe", "out/");
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_NE(unknown.errors.find(
                  "unknown.flt: the database can't be put on the globe: unknown projection, number 9"),
              std::string::npos)
        << unknown.errors;
}
