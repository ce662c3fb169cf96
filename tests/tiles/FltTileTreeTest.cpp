#include "tiles/FltTileTree.h"

#include "globe/FltGlobeFrame.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <utility>

namespace
{

using Json = nlohmann::json;
using Places = std::vector<FltProjection::Place>;

/// A tree of tiles that are a kilometre wide, each of which has its number for a content.
class TreeOfTiles
{
public:
    explicit TreeOfTiles(Places given, std::vector<std::size_t> entries = {}, double error = 0)
        : places(std::move(given))
    {
        FltTileTree tree(
            places,
            [&](std::size_t tile) {
                return FltTileEntry{{{"geometricError", error}, {"content", tile}},
                                    "",
                                    boxOf(tile),
                                    error,
                                    entries.empty() ? 1 : entries.at(tile)};
            },
            [&](FltTileEntry const& part) {
                outside.push_back(part.entries);
                return "part-" + std::to_string(outside.size());
            });
        made = std::make_unique<FltTileEntry>(tree.make());
        root = Json::parse(made->text);
    }

    FltTileBox boxOf(std::size_t tile) const
    {
        return FltTileBox(SbBox3d(SbVec3d(-500, -500, -5), SbVec3d(500, 500, 20)))
            .movedBy(FltGlobeFrame(places.at(tile)).matrix());
    }

    /// How the tiles hang, such as "(0 (1 2))".
    static std::string shapeOf(Json const& entry)
    {
        if (!entry.contains("children"))
            return entry.at("content").dump();
        std::string shape;
        for (Json const& child : entry["children"])
            shape += (shape.empty() ? "(" : " ") + shapeOf(child);
        return shape + ')';
    }
    std::string shape() const { return shapeOf(root); }

    Places places;
    std::vector<std::size_t> outside; ///< The entries of each part that has a file of its own.
    std::unique_ptr<FltTileEntry> made;
    Json root;
};

} // namespace

TEST(FltTileTree, hangsUpToFourTilesInOneNode)
{
    EXPECT_EQ(TreeOfTiles({{48, 9, 0}}).shape(), "(0)");
    EXPECT_EQ(TreeOfTiles({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}}).shape(), "(0 1 2 3)");
    EXPECT_EQ(TreeOfTiles({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {4, 0, 0}, {5, 0, 0}}).shape(),
              "((0 1 2) (3 4))");
}

TEST(FltTileTree, hasQuartersFromTheSouthWestToTheNorthEast)
{
    Places places;
    for (double const latitude : {11.0, 10.0})
        for (double const longitude : {21.0, 20.0})
            for (double const way : {0.0, 0.1})
                places.push_back({latitude + way, longitude + way, 0});
    EXPECT_EQ(TreeOfTiles(places).shape(), "((6 7) (4 5) (2 3) (0 1))");
}

TEST(FltTileTree, hangsATileThatIsAloneInItsQuarterAtOnce)
{
    EXPECT_EQ(TreeOfTiles({{1, 0, 0}, {1, 0.1, 0}, {1, 0.2, 0}, {1, 0.3, 0}, {1, 9, 0}}).shape(),
              "((0 1 2 3) 4)");
}

TEST(FltTileTree, countsTheMiddleToTheSouthAndWest)
{
    EXPECT_EQ(TreeOfTiles({{0, 5, 0}, {0, 5, 0}, {1, 5, 0}, {2, 5, 0}, {2, 5, 0}}).shape(),
              "((0 1 2) (3 4))");
    EXPECT_EQ(TreeOfTiles({{5, 0, 0}, {5, 0, 0}, {5, 1, 0}, {5, 2, 0}, {5, 2, 0}}).shape(),
              "((0 1 2) (3 4))");
}

TEST(FltTileTree, partsTilesInOnePlaceByTheirNumbers)
{
    EXPECT_EQ(TreeOfTiles(Places(5, {48, 9, 0})).shape(), "((0 1) 2 3 4)");
}

TEST(FltTileTree, partsTilesByTheirPlacesThirtyTwoTimes)
{
    Places places; // each quarter takes one of them off
    for (int i = 0; i < 40; ++i)
        places.push_back({std::ldexp(1, -i), 0, 0});
    TreeOfTiles const tree(places);
    Json const* node = &tree.root;
    int depth = 0;
    for (; node->at("children").size() == 2; ++depth)
        node = &node->at("children")[0];
    EXPECT_EQ(depth, 32);
    EXPECT_EQ(TreeOfTiles::shapeOf(*node), "((32 33) (34 35) (36 37) (38 39))");
}

TEST(FltTileTree, hasABoxThatLiesCloseAroundItsTiles)
{
    TreeOfTiles const one({{48, 9, 0}});
    EXPECT_NEAR(one.made->box.diagonal(), one.boxOf(0).diagonal(), 0.01);
    EXPECT_GT(one.made->box.diagonal(), one.boxOf(0).diagonal());
    TreeOfTiles const two({{48, 9, 0}, {48, 9.01, 0}}); // 745 metres farther east
    EXPECT_NEAR(two.made->box.diagonal(), std::hypot(1745.5, 1000, 26), 2);
}

TEST(FltTileTree, hasATwentiethOfTheDiagonalAsErrorAndNoneLargerInIt)
{
    TreeOfTiles const coarse({{48, 9, 0}}, {}, 1e6);
    double const error = coarse.made->box.diagonal() / 20;
    EXPECT_DOUBLE_EQ(coarse.made->error, error);
    EXPECT_DOUBLE_EQ(coarse.root["geometricError"].get<double>(), error);
    EXPECT_DOUBLE_EQ(coarse.root["children"][0]["geometricError"].get<double>(), error);
    EXPECT_EQ(coarse.root["refine"], "ADD");
    TreeOfTiles const fine({{48, 9, 0}}, {}, 2);
    EXPECT_EQ(fine.root["children"][0]["geometricError"], 2);
}

TEST(FltTileTree, holdsTenThousandEntries)
{
    TreeOfTiles const tree({{1, 0, 0}, {2, 0, 0}}, {4000, 5999});
    EXPECT_EQ(tree.made->entries, 10000U);
    EXPECT_TRUE(tree.outside.empty());
}

TEST(FltTileTree, movesTheLargestPartsIntoFilesOfTheirOwn)
{
    TreeOfTiles const tree({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, {3000, 6999, 1}, 7);
    EXPECT_EQ(tree.outside, std::vector<std::size_t>{6999});
    EXPECT_EQ(tree.made->entries, 1U + 3000 + 1 + 1);
    EXPECT_EQ(tree.root["children"][0]["content"], 0);
    EXPECT_EQ(tree.root["children"][1]["content"]["uri"], "part-1");
    EXPECT_EQ(tree.root["children"][1]["geometricError"], 7);
    EXPECT_EQ(tree.root["children"][2]["content"], 2);
    EXPECT_EQ(TreeOfTiles({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, {9000, 12000, 12000}).outside,
              (std::vector<std::size_t>{12000, 12000}));
}
