#include "tiles/FltTileset.h"

#include "CheckedTileset.h"
#include "globe/OnEarth.h"
#include "gltf/FltGltfError.h"
#include "support/Moved.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace
{

FltTile tile(std::string const& file, double latitude, double longitude)
{
    FltTile made;
    made.file = file;
    made.place = FltProjection::Place{latitude, longitude, 100};
    made.box = {SbVec3d(-500, -500, -5), SbVec3d(500, 500, 20)};
    return made;
}

FltTile model(std::string const& file)
{
    FltTile made;
    made.file = file;
    made.box = {SbVec3d(-3, -3, 0), SbVec3d(3, 3, 20)};
    return made;
}

SbVec3d placeOf(CheckedTileset::Content const& content)
{
    return {content.matrix[3][0], content.matrix[3][1], content.matrix[3][2]};
}

std::vector<FltTile> country(int rows, int columns)
{
    std::vector<FltTile> tiles;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            tiles.push_back(tile("t/" + std::to_string(row) + "-" + std::to_string(column) + ".glb",
                                 47 + row * 0.009, 8 + column * 0.0135));
    return tiles;
}

class FltTilesetTest : public testing::Test
{
protected:
    FltTilesetReport write(std::vector<FltTile> const& tiles) { return FltTileset(tiles).write(path()); }
    std::string path() const { return folder / "tileset.json"; }
    std::string contents() const
    {
        std::ifstream stream(path());
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(FltTilesetTest, placesATileOnTheEarth)
{
    FltTilesetReport const report = write({tile("a b.glb", 48, 9)});
    EXPECT_EQ(report.tiles, 1U);
    EXPECT_EQ(report.files, std::vector<std::string>{path()});
    CheckedTileset const read(path());
    ASSERT_EQ(read.contents.size(), 1U);
    CheckedTileset::Content const& content = read.of("a%20b.glb");
    EXPECT_LT(OnEarth::distance(placeOf(content), OnEarth::geocentric(48, 9, 100)), 1e-6);
    SbVec3d const up(content.matrix[2][0], content.matrix[2][1], content.matrix[2][2]);
    EXPECT_GT(up.dot(OnEarth::upAt(48, 9)), 1 - 1e-12);
    EXPECT_EQ(content.error, 0);
    EXPECT_EQ(read.first.at("root").at("refine"), "ADD");
}

TEST_F(FltTilesetTest, hangsNeighboursInAQuadtreeWhoseBoxesEncloseThem)
{
    write(country(30, 30));
    CheckedTileset const read(path());
    EXPECT_EQ(read.contents.size(), 900U);
    EXPECT_EQ(read.entries.size(), 1U);
    std::vector<CheckedTileset::Json> open = {read.first.at("root")};
    while (!open.empty()) {
        CheckedTileset::Json const entry = open.back();
        open.pop_back();
        if (!entry.contains("children"))
            continue;
        EXPECT_FALSE(entry.contains("content"));
        EXPECT_LE(entry["children"].size(), 4U);
        auto const sides = entry["boundingVolume"]["box"].get<std::array<double, 12>>();
        double square = 0;
        for (std::size_t i = 3; i < 12; ++i)
            square += 4 * sides.at(i) * sides.at(i);
        EXPECT_NEAR(entry["geometricError"].get<double>(), std::sqrt(square) / 20, 1e-6);
        open.insert(open.end(), entry["children"].begin(), entry["children"].end());
    }
}

TEST_F(FltTilesetTest, partsManyTilesIntoFilesOfTenThousandEntries)
{
    FltTilesetReport const report = write(country(125, 160));
    CheckedTileset const read(path());
    EXPECT_EQ(read.contents.size(), 20000U);
    EXPECT_EQ(read.entries.size(), report.files.size());
    EXPECT_GE(read.entries.size(), 3U);
    for (std::size_t const entries : read.entries)
        EXPECT_LE(entries, 10000U);
    EXPECT_EQ(report.files.front(), folder / "tileset-1.json");
    EXPECT_EQ(report.files.back(), path());
    for (CheckedTileset::Content const& content : read.contents)
        EXPECT_LE(content.depth, 2U) << "near one tile a viewer needs few files";
}

TEST_F(FltTilesetTest, isTheSameInAnyOrderOfTiles)
{
    std::vector<FltTile> tiles = country(9, 7);
    write(tiles);
    std::string const before = contents();
    std::reverse(tiles.begin(), tiles.end());
    write(tiles);
    EXPECT_EQ(contents(), before);
}

TEST_F(FltTilesetTest, hangsTilesThatStandInOnePlace)
{
    std::vector<FltTile> tiles;
    for (int i = 0; i < 100; ++i)
        tiles.push_back(tile(std::to_string(i) + ".glb", -33, 151));
    write(tiles);
    EXPECT_EQ(CheckedTileset(path()).contents.size(), 100U);
}

TEST_F(FltTilesetTest, hangsTilesOfTheWholeGlobe)
{
    std::vector<FltTile> tiles;
    for (int latitude = -90; latitude <= 90; latitude += 30)
        for (int longitude = -180; longitude < 180; longitude += 45)
            tiles.push_back(tile(std::to_string(latitude) + "," + std::to_string(longitude) + ".glb",
                                 latitude, longitude));
    write(tiles);
    EXPECT_EQ(CheckedTileset(path()).contents.size(), tiles.size());
}

TEST_F(FltTilesetTest, hasCoarserFilesGiveWayToFinerOnes)
{
    FltTile tower = tile("x.glb", 48, 9);
    tower.coarser = {{"x.1.glb", 500}, {"x.2.glb", 3000}};
    write({tower});
    CheckedTileset const read(path());
    // distance * 16 * 2 * tan 30 degrees / 1080
    EXPECT_EQ(read.of("x.glb").error, 0);
    EXPECT_NEAR(read.of("x.1.glb").error, 500 * 0.01710667, 1e-4);
    EXPECT_NEAR(read.of("x.2.glb").error, 3000 * 0.01710667, 1e-4);
    CheckedTileset::Json const& coarsest = read.first["root"]["children"][0];
    EXPECT_EQ(coarsest["content"]["uri"], "x.2.glb");
    EXPECT_EQ(coarsest["refine"], "REPLACE");
    EXPECT_EQ(coarsest["children"][0]["refine"], "REPLACE");
    EXPECT_EQ(coarsest["children"][0]["children"][0]["content"]["uri"], "x.glb");
}

TEST_F(FltTilesetTest, hasNothingWhereAChainEnds)
{
    FltTile tower = tile("x.glb", 48, 9);
    tower.coarser = {{"", 1000}};
    write({tower});
    CheckedTileset const read(path());
    EXPECT_EQ(read.contents.size(), 1U);
    EXPECT_FALSE(read.first["root"]["children"][0].contains("content"));
    EXPECT_NEAR(read.first["root"]["children"][0]["geometricError"].get<double>(), 1000 * 0.01710667, 1e-4);
}

TEST_F(FltTilesetTest, hasNoErrorLargerThanThatAroundIt)
{
    FltTile tower = tile("x.glb", 48, 9);
    tower.coarser = {{"x.1.glb", 1e9}}; // CheckedTileset looks at it
    write({tower, tile("y.glb", 48, 9.01)});
    EXPECT_LT(CheckedTileset(path()).of("x.1.glb").error, 1000) << "far away no tile is asked for";
}

TEST_F(FltTilesetTest, placesModelsWhereTilesReferToThem)
{
    FltTile ground = tile("ground.glb", 48, 9);
    ground.references = {{"m/tree.glb", moved(100, 0, 5)}, {"m/tree.glb", moved(2000, 0, 5)}};
    FltTile tree = model("m/tree.glb");
    tree.references = {{"m/nest.glb", moved(0, 0, 8)}};
    FltTilesetReport const report = write({ground, tree, model("m/nest.glb"), model("m/nowhere.glb")});
    EXPECT_EQ(report.tiles, 1U);
    EXPECT_EQ(report.models, 3U);
    CheckedTileset const read(path());
    EXPECT_EQ(read.count("ground.glb"), 1U);
    EXPECT_EQ(read.count("m/tree.glb"), 2U);
    EXPECT_EQ(read.count("m/nest.glb"), 2U);
    EXPECT_EQ(read.count("m/nowhere.glb"), 0U);
    EXPECT_NEAR(OnEarth::distance(placeOf(read.of("m/nest.glb")), OnEarth::geocentric(48, 9, 100)),
                std::hypot(100, 13), 1e-6);
    EXPECT_GT(read.first["root"]["children"][0]["geometricError"].get<double>(), 0)
        << "a viewer comes to them before it is content with the ground";
}

TEST_F(FltTilesetTest, placesModelsOfATileThatShowsNothingElse)
{
    FltTile bare = tile("bare.glb", 48, 9);
    bare.box.makeEmpty();
    bare.references = {{"tree.glb", moved(100, 0, 5)}};
    write({bare, tile("other.glb", 48, 9.1), model("tree.glb")});
    EXPECT_EQ(CheckedTileset(path()).count("tree.glb"), 1U);
}

TEST_F(FltTilesetTest, saysWhatItCantPlace)
{
    FltTile ground = tile("ground.glb", 48, 9);
    ground.references = {{"gone.glb", moved(1, 0, 0)},
                         {"gone.glb", moved(2, 0, 0)},
                         {"other.glb", moved(0, 0, 0)},
                         {"round.glb", moved(0, 0, 0)}};
    FltTile round = model("round.glb");
    round.references = {{"round.glb", moved(1, 0, 0)}};
    FltTilesetReport const report = write({ground, tile("other.glb", 48, 9.1), round});
    EXPECT_EQ(report.missing, std::vector<std::string>{"gone.glb"});
    EXPECT_EQ(report.placedTwice, std::vector<std::string>{"other.glb"});
    EXPECT_EQ(report.tooMany, std::vector<std::string>{"round.glb"});
    EXPECT_EQ(CheckedTileset(path()).contents.size(), 3U);
}

TEST_F(FltTilesetTest, endsWithModelsThatHoldEachOtherManyTimes)
{
    std::vector<FltTile> tiles = {tile("ground.glb", 48, 9)};
    tiles[0].references = {{"0.glb", moved(0, 0, 0)}};
    for (int i = 0; i < 30; ++i) {
        tiles.push_back(model(std::to_string(i) + ".glb"));
        for (int twice = 0; twice < 2; ++twice)
            tiles.back().references.push_back({std::to_string(i + 1) + ".glb", moved(twice, 0, 0)});
    }
    tiles.push_back(model("30.glb"));
    FltTilesetReport const report = write(tiles);
    EXPECT_FALSE(report.tooMany.empty());
    EXPECT_LT(std::filesystem::file_size(path()), 100'000'000U);
}

TEST_F(FltTilesetTest, isNotWrittenForNothing)
{
    folder.write("tileset.json", "before");
    EXPECT_THROW(write({}), FltGltfError);
    EXPECT_THROW(write({model("a.glb")}), FltGltfError);
    FltTile empty = tile("a.glb", 1, 2);
    empty.box.makeEmpty();
    EXPECT_THROW(write({empty}), FltGltfError);
    EXPECT_EQ(contents(), "before");
}

TEST_F(FltTilesetTest, refusesTwoDatabasesWithOneFile)
{
    FltTile x = tile("x.glb", 48, 9);
    x.coarser = {{"x.1.glb", 100}};
    EXPECT_THROW(write({x, tile("x.1.glb", 48, 9)}), FltGltfError);
}

TEST_F(FltTilesetTest, saysWhereItCantBeWritten)
{
    EXPECT_THROW(FltTileset({tile("a.glb", 1, 2)}).write(folder / "none/tileset.json"), FltGltfError);
}
