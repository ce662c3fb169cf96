#include "ProgramRun.h"
#include "loader/FltRecordReader.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace
{

using Files = std::map<std::string, std::string>;
using Json = nlohmann::json;

constexpr int pointsOfASide = 7; ///< Of a tile's land.

ProgramRun makeCountry(std::string const& arguments)
{
    return {"make_country", arguments};
}

/// All files below a folder, by their places in it.
Files filesBelow(std::string const& folder)
{
    Files files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[std::filesystem::relative(entry.path(), folder).string()] = contentsOf(entry.path());
    return files;
}

std::vector<std::string> placesOf(Files const& files)
{
    std::vector<std::string> places;
    for (auto const& [place, bytes] : files)
        places.push_back(place);
    return places;
}

std::vector<Json> recordsOf(std::string const& database, int opcode)
{
    std::vector<Json> found;
    for (FltRecordReader records(database); records.next();)
        if (records.opcode() == opcode)
            found.push_back(Json::parse(records.json()).at("fields"));
    return found;
}

/// What neighbours have in common of the vertices of a tile's land: rows from the south-west.
std::vector<Json> landOf(std::string const& tile)
{
    constexpr int vertexWithColorNormalAndUv = 70;
    std::vector<Json> vertices = recordsOf(tile, vertexWithColorNormalAndUv);
    for (Json& vertex : vertices)
        vertex.erase("texture");
    return vertices;
}

std::vector<Json> edgeOf(std::vector<Json> const& land, int first, int step)
{
    std::vector<Json> edge;
    for (int i = 0; i < pointsOfASide; ++i) {
        int const point = first + i * step;
        edge.push_back(land.at(static_cast<std::size_t>(point)));
    }
    return edge;
}

void expectNeighboursMeet(std::string const& options)
{
    ScratchFolder const folder;
    ASSERT_EQ(makeCountry("--tiles 4 " + options + " " + (folder / "c")).exitCode, 0);
    std::vector<Json> const southWest = landOf(folder / "c/row_0000/tile_0000_0000.flt");
    std::vector<Json> const southEast = landOf(folder / "c/row_0000/tile_0000_0001.flt");
    std::vector<Json> const northWest = landOf(folder / "c/row_0001/tile_0001_0000.flt");
    constexpr int last = pointsOfASide - 1;
    EXPECT_EQ(edgeOf(southWest, last, pointsOfASide), edgeOf(southEast, 0, pointsOfASide));
    EXPECT_EQ(edgeOf(southWest, last * pointsOfASide, 1), edgeOf(northWest, 0, 1));
    EXPECT_NE(southWest.front().at("Zcoordinate"), southEast.front().at("Zcoordinate"));
}

} // namespace

TEST(MakeCountry, writesTheSameBytesEveryTime)
{
    ScratchFolder const folder;
    for (char const* name : {"first", "second"})
        ASSERT_EQ(makeCountry("--tiles 10 --damaged 20 " + (folder / name)).exitCode, 0);
    EXPECT_EQ(filesBelow(folder / "first"), filesBelow(folder / "second"));
}

TEST(MakeCountry, spreadsTilesOverFoldersByRowsOrByQuarters)
{
    ScratchFolder const folder;
    ASSERT_EQ(makeCountry("--tiles 7 " + (folder / "rows")).exitCode, 0);
    ASSERT_EQ(makeCountry("--tiles 7 --folders quads " + (folder / "quads")).exitCode, 0);
    std::vector<std::string> const shared = {"models/farm.flt",     "models/mast.flt",
                                             "models/wood.flt",     "textures/corrugation.rgb",
                                             "textures/ground.png", "textures/windows.png"};
    std::vector<std::string> rows = {"row_0000/tile_0000_0000.flt", "row_0000/tile_0000_0001.flt",
                                     "row_0000/tile_0000_0002.flt", "row_0001/tile_0001_0000.flt",
                                     "row_0001/tile_0001_0001.flt", "row_0001/tile_0001_0002.flt",
                                     "row_0002/tile_0002_0000.flt"};
    std::vector<std::string> quads = {"quad/0/tile_0000_0000.flt", "quad/0/tile_0000_0001.flt",
                                      "quad/0/tile_0001_0000.flt", "quad/0/tile_0001_0001.flt",
                                      "quad/1/tile_0000_0002.flt", "quad/1/tile_0001_0002.flt",
                                      "quad/2/tile_0002_0000.flt"};
    for (std::vector<std::string>* places : {&rows, &quads}) {
        places->insert(places->end(), shared.begin(), shared.end());
        std::sort(places->begin(), places->end());
    }
    EXPECT_EQ(placesOf(filesBelow(folder / "rows")), rows);
    EXPECT_EQ(placesOf(filesBelow(folder / "quads")), quads);
}

TEST(MakeCountry, hasTilesThatFindTheirModelsAndTextures)
{
    for (char const* options : {"", "--folders quads --utm "}) {
        ScratchFolder const folder;
        ASSERT_EQ(makeCountry("--tiles 9 " + (options + (folder / "c"))).exitCode, 0);
        ProgramRun const run("flt2iv", "-q -o " + (folder / "out/") + " " + (folder / "c"));
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "") << options;
    }
}

TEST(MakeCountry, hasTilesThatMeetAtTheirEdges)
{
    expectNeighboursMeet("");
    expectNeighboursMeet("--utm");
}

TEST(MakeCountry, saysInEachHeaderWhereTheTileIs)
{
    constexpr int header = 1;
    ScratchFolder const folder;
    ASSERT_EQ(makeCountry("--tiles 1 " + (folder / "flat")).exitCode, 0);
    ASSERT_EQ(makeCountry("--tiles 1 --utm " + (folder / "utm")).exitCode, 0);
    std::string const tile = "/row_0000/tile_0000_0000.flt";
    Json const flat = recordsOf((folder / "flat") + tile, header).at(0);
    Json const utm = recordsOf((folder / "utm") + tile, header).at(0);
    EXPECT_EQ(flat.at("projectionType"), 0);
    EXPECT_EQ(utm.at("projectionType"), 4);
    EXPECT_EQ(utm.at("utmZone"), 32);
    for (Json const& one : {flat, utm}) {
        EXPECT_EQ(one.at("originLatitude"), 47.5);
        EXPECT_EQ(one.at("originLongitude"), 9.0);
    }
    // The first corner of the only tile is the origin: by cs2cs from EPSG:4326 to EPSG:32632.
    Json const corner = landOf((folder / "utm") + tile).front();
    EXPECT_EQ(corner.at("Xcoordinate"), 500000.0);
    EXPECT_NEAR(corner.at("Ycoordinate").get<double>(), 5260729.733077, 1e-6);
}

TEST(MakeCountry, damagesAsManyTilesAsItIsToldTo)
{
    ScratchFolder const folder;
    ASSERT_EQ(makeCountry("--tiles 40 " + (folder / "whole")).exitCode, 0);
    ProgramRun const run = makeCountry("--tiles 40 --damaged 20 " + (folder / "damaged"));
    EXPECT_EQ(run.output, "40 tiles, 8 of them damaged\n");
    Files const whole = filesBelow(folder / "whole"), damaged = filesBelow(folder / "damaged");
    ASSERT_EQ(placesOf(whole), placesOf(damaged));
    std::size_t differing = 0, unreadable = 0;
    for (auto const& [place, bytes] : whole) {
        if (damaged.at(place) == bytes)
            continue;
        ++differing;
        ProgramRun const conversion("flt2iv", folder / ("damaged/" + place));
        EXPECT_NE(conversion.errors, "") << place;
        unreadable += conversion.exitCode == 1 ? 1 : 0;
    }
    EXPECT_EQ(differing, 8U);
    EXPECT_EQ(unreadable, 4U) << "half of them can be read in part";
}

TEST(MakeCountry, writesIntoNoFolderThatIsInUseUnlessForced)
{
    ScratchFolder const folder;
    std::string const ground = folder.write("c/textures/ground.png", "mine");
    ProgramRun const run = makeCountry(folder / "c");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("Add --force"), std::string::npos) << run.errors;
    EXPECT_EQ(contentsOf(ground), "mine");
    EXPECT_EQ(makeCountry("--force --tiles 1 " + (folder / "c")).exitCode, 0);
    EXPECT_NE(contentsOf(ground), "mine");
}

TEST(MakeCountry, exitsWith1WhereItCanNotWriteAnd2ForWrongUsage)
{
    EXPECT_EQ(makeCountry("/dev/null/country").exitCode, 1);
    for (char const* arguments : {"", "--tiles 0 out", "--damaged 101 out", "--folders heaps out"})
        EXPECT_EQ(makeCountry(arguments).exitCode, 2) << arguments;
}
