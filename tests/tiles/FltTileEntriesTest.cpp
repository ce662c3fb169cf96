#include "tiles/FltTileEntries.h"

#include "support/Moved.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using Json = FltTileEntries::Json;

/// Without a place.
FltTile model(std::string const& file)
{
    FltTile made;
    made.file = file;
    made.box = {SbVec3d(-3, -3, 0), SbVec3d(3, 3, 20)};
    return made;
}

FltTile ground(std::vector<FltTile::Reference> references = {})
{
    FltTile made = model("ground");
    made.place = FltProjection::Place{48, 9, 0};
    made.box = {SbVec3d(-500, -500, -5), SbVec3d(500, 500, 20)};
    made.references = std::move(references);
    return made;
}

class FltTileEntriesTest : public testing::Test
{
protected:
    /// The entry of the first tile.
    FltTileEntry make(std::vector<FltTile> const& tiles)
    {
        report = {};
        std::optional<FltTileEntry> entry = FltTileEntries(tiles, report).of(tiles.front());
        EXPECT_TRUE(entry.has_value());
        return entry ? *entry : FltTileEntry{{}, "", FltTileBox(SbBox3d()), 0, 0};
    }

    FltTilesetReport report;
};

double errorAt(double distance)
{
    return distance * 32 / std::sqrt(3.0) / 1080;
}

} // namespace

TEST_F(FltTileEntriesTest, holdsAPlacedModelWithItsMatrixRowByRow)
{
    FltTileEntry const entry = make({ground({{"tree", moved(100, 30, 7)}}), model("tree")});
    ASSERT_EQ(entry.json["children"].size(), 2U);
    EXPECT_EQ(entry.json["refine"], "ADD");
    EXPECT_EQ(entry.json["children"][0]["content"]["uri"], "ground");
    EXPECT_FALSE(entry.json["children"][0].contains("transform"));
    EXPECT_EQ(entry.json["children"][1]["content"]["uri"], "tree");
    EXPECT_EQ(entry.json["children"][1]["transform"],
              (std::vector<double>{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 100, 30, 7, 1}));
    EXPECT_EQ(entry.entries, 3U);
    EXPECT_EQ(report.placed, 1U);
}

TEST_F(FltTileEntriesTest, hasATwentiethOfTheDiagonalAsErrorWhereModelsStand)
{
    FltTileEntry const entry = make({ground({{"tree", moved(100, 0, 5)}}), model("tree")});
    double const expected = std::sqrt(1000.0 * 1000 * 2 + 30 * 30) / 20;
    EXPECT_NEAR(entry.json["geometricError"].get<double>(), expected, 1e-9);
    EXPECT_NEAR(entry.error, expected, 1e-9);
    EXPECT_EQ(make({ground()}).error, 0);
}

TEST_F(FltTileEntriesTest, hasNoSmallerErrorThanWhatIsInIt)
{
    FltTile tree = model("tree");
    tree.coarser = {{"tree.1", 1e5}, {"tree.2", 50}};
    FltTileEntry const entry = make({ground({{"tree", moved(0, 0, 0)}}), tree});
    EXPECT_NEAR(entry.error, errorAt(1e5), 1e-6);
    EXPECT_EQ(entry.entries, 5U);
    FltTile high = ground();
    high.coarser = {{"g.1", 1e5}};
    EXPECT_NEAR(make({high}).error, errorAt(1e5), 1e-6);
    EXPECT_EQ(make({high}).entries, 2U);
}

TEST_F(FltTileEntriesTest, leavesOutWhatHasNoFinitePlace)
{
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            SbDPMatrix matrix = moved(1, 2, 3);
            matrix[row][column] = std::numeric_limits<double>::infinity();
            FltTileEntry const entry = make({ground({{"tree", matrix}}), model("tree")});
            EXPECT_FALSE(entry.json.contains("children")) << row << column;
            EXPECT_EQ(report.placed, 0U);
        }
}

TEST_F(FltTileEntriesTest, leavesOutModelsInWhichNothingIsSeen)
{
    FltTile empty = model("tree");
    empty.box.makeEmpty();
    EXPECT_FALSE(make({ground({{"tree", moved(0, 0, 0)}}), empty}).json.contains("children"));
    EXPECT_EQ(report.placed, 0U);
    EXPECT_TRUE(report.missing.empty());
    empty.coarser = {{"tree.1", 10}};
    EXPECT_EQ(make({ground({{"tree", moved(0, 0, 0)}}), empty}).entries, 1U);
}

TEST_F(FltTileEntriesTest, hasTheModelsAloneWhereNothingElseIsSeen)
{
    FltTile empty = ground({{"tree", moved(100, 0, 0)}});
    empty.box.makeEmpty();
    FltTileEntry const entry = make({empty, model("tree")});
    ASSERT_EQ(entry.json["children"].size(), 1U);
    EXPECT_EQ(entry.json["boundingVolume"]["box"],
              (std::vector<double>{100, 0, 10, 3, 0, 0, 0, 3, 0, 0, 0, 10}));
    empty.references.clear();
    FltTilesetReport unused;
    std::vector<FltTile> const tiles = {empty, model("tree")};
    EXPECT_FALSE(FltTileEntries(tiles, unused).of(tiles[0]));
    EXPECT_FALSE(FltTileEntries(tiles, unused).of(tiles[1])) << "it has no place";
}

TEST_F(FltTileEntriesTest, takesTenThousandEntriesAndTenForEachReferenceAndNoMore)
{
    FltTile avenue = model("avenue");
    std::vector<FltTile::Reference> const avenues(70, {"avenue", moved(0, 0, 0)});
    // An avenue has 179 trees, itself, and an entry around both: 181. The ground and 69 of them are 12,490.
    avenue.references.assign(179, {"tree", moved(1, 0, 0)});
    FltTileEntry const full = make({ground(avenues), avenue, model("tree")});
    EXPECT_EQ(full.json["children"].size(), 70U) << "with the ground";
    EXPECT_EQ(full.entries, 12491U) << "with the entry around all";
    EXPECT_EQ(report.tooMany, std::vector<std::string>{"ground"});
    EXPECT_EQ(report.placed, 69U + 179);
    // Of 178 entries each, the ground and 70 of them are 12,461 where 12,460 may be.
    avenue.references.resize(176, {"tree", moved(1, 0, 0)});
    EXPECT_EQ(make({ground(avenues), avenue, model("tree")}).json["children"].size(), 70U);
    EXPECT_EQ(report.tooMany, std::vector<std::string>{"ground"});
}

TEST_F(FltTileEntriesTest, placesModelsInModelsThirtyTwoDeep)
{
    std::vector<FltTile> tiles = {ground({{"0", moved(0, 0, 0)}})};
    for (int i = 0; i < 32; ++i) {
        tiles.push_back(model(std::to_string(i)));
        if (i < 31)
            tiles.back().references = {{std::to_string(i + 1), moved(0, 0, 0)}};
    }
    make(tiles);
    EXPECT_EQ(report.placed, 32U);
    EXPECT_TRUE(report.tooMany.empty());
    tiles.back().references = {{"32", moved(0, 0, 0)}};
    tiles.push_back(model("32"));
    make(tiles);
    EXPECT_EQ(report.placed, 32U);
    EXPECT_EQ(report.tooMany, std::vector<std::string>{"32"});
}

TEST_F(FltTileEntriesTest, lowersTheErrorsOfAllThatIsInAnEntry)
{
    Json entry = {
        {"geometricError", 5},
        {"children",
         {{{"geometricError", 9}, {"children", {{{"geometricError", 8}}}}}, {{"geometricError", 3}}}}};
    FltTileEntries::limitErrors(entry, 4);
    EXPECT_EQ(entry["geometricError"], 4);
    EXPECT_EQ(entry["children"][0]["geometricError"], 4);
    EXPECT_EQ(entry["children"][0]["children"][0]["geometricError"], 4);
    EXPECT_EQ(entry["children"][1]["geometricError"], 3);
}
