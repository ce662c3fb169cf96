#include "tiles/FltTileFiles.h"

#include "CheckedTileset.h"
#include "globe/OnEarth.h"
#include "gltf/ReadGltf.h"
#include "support/MadeNodes.h"
#include "support/Moved.h"
#include "support/ScratchFolder.h"
#include "tiles/FltTileset.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>

namespace
{

using namespace MadeNodes;

Node triangle(std::vector<SbVec3d> const& places)
{
    FltMesh mesh;
    mesh.isLit = false;
    mesh.origin = SbVec3d(SbVec3f(places.front()));
    for (SbVec3d const& place : places)
        mesh.positions.push_back(SbVec3f(place - mesh.origin));
    mesh.indices = {0, 1, 2, FltMesh::end};
    mesh.colors = {~0U};
    Node made = node();
    made->meshes = {mesh};
    return made;
}

/// A triangle of this size.
Node sized(double size)
{
    return triangle({{0, 0, 0}, {size, 0, 0}, {0, size, 0}});
}

Node levels(std::vector<Node> children, std::vector<double> const& distances)
{
    Node made = node(std::move(children));
    made->become<FltVisualLevels>().distances = distances;
    return made;
}

class FltTileFilesTest : public testing::Test
{
protected:
    FltTileFiles::Written write(std::vector<Node> parts, bool splits = true)
    {
        visual.root = node(std::move(parts));
        return FltTileFiles::write(visual, folder / "x.glb", options, splits);
    }

    ReadGltf read(std::string const& name) const
    {
        std::ifstream stream(folder / name, std::ios::binary);
        return ReadGltf({std::istreambuf_iterator<char>(stream), {}});
    }

    /// How far the triangles of a file reach.
    double reach(std::string const& name) const
    {
        double farthest = 0;
        for (ReadGltf::Corner const& corner : read(name).corners())
            farthest = std::max(farthest, corner.place[0]);
        return farthest;
    }

    FltVisual visual;
    FltGltfOptions options;
    ScratchFolder folder;
};

} // namespace

TEST_F(FltTileFilesTest, hasAFileForEachDistanceAtWhichTheTopChanges)
{
    Node const deeper = levels({sized(3), sized(4)}, {250});
    auto const written = write({levels({deeper, sized(8), nullptr}, {300, 900}), sized(1)});
    ASSERT_EQ(written.tile.coarser.size(), 2U);
    EXPECT_EQ(written.tile.file, "x.glb");
    EXPECT_EQ(written.tile.coarser[0].file, "x.1.glb");
    EXPECT_EQ(written.tile.coarser[0].distance, 300);
    EXPECT_EQ(written.tile.coarser[1].distance, 900);
    EXPECT_EQ(reach("x.glb"), 3);
    EXPECT_EQ(reach("x.1.glb"), 8);
    EXPECT_EQ(reach("x.2.glb"), 1) << "farther away there is nothing but what has no levels";
    EXPECT_EQ(written.report.files.size(), 3U);
    EXPECT_NEAR(written.tile.box.getMax()[0], 8, 0.002) << "the box is that of all forms";
}

TEST_F(FltTileFilesTest, hasNoFileWhereNothingIsSeen)
{
    auto const written = write({levels({sized(3), nullptr}, {300})});
    ASSERT_EQ(written.tile.coarser.size(), 1U);
    EXPECT_EQ(written.tile.coarser[0].file, "");
    EXPECT_FALSE(std::filesystem::exists(folder / "x.1.glb"));
}

TEST_F(FltTileFilesTest, hasOneFileUnlessItIsAskedForMore)
{
    auto const written = write({levels({sized(3), sized(8)}, {300})}, false);
    EXPECT_TRUE(written.tile.coarser.empty());
    EXPECT_EQ(reach("x.glb"), 3);
}

TEST_F(FltTileFilesTest, hasEightCoarserFilesAtMost)
{
    std::vector<Node> many;
    for (int i = 0; i < 40; ++i)
        many.push_back(levels({sized(1), nullptr}, {100.0 + i}));
    auto const written = write(many);
    ASSERT_EQ(written.tile.coarser.size(), 8U);
    EXPECT_EQ(written.leftOut, 32U);
    std::vector<double> distances;
    for (FltTile::Level const& level : written.tile.coarser)
        distances.push_back(level.distance);
    EXPECT_EQ(distances, (std::vector<double>{100, 105, 111, 116, 122, 127, 133, 139}));
}

TEST_F(FltTileFilesTest, leavesOutNoneOfEightDistancesAndOneOfNine)
{
    std::vector<Node> parts;
    for (int i = 0; i < 8; ++i)
        parts.push_back(levels({sized(1), nullptr}, {100.0 + i}));
    EXPECT_EQ(write(parts).leftOut, 0U);
    parts.push_back(levels({sized(1), nullptr}, {200}));
    auto const written = write(parts);
    EXPECT_EQ(written.leftOut, 1U);
    EXPECT_EQ(written.tile.coarser.size(), 8U);
}

TEST_F(FltTileFilesTest, hasTheWayThatFacesAreLiftedAroundItsBox)
{
    auto const top = [this](Node const& part) { return write({part}, false).tile.box.getMax()[2]; };
    Node const part = sized(1);
    EXPECT_NEAR(top(part), 0.001, 1e-9);
    part->meshes[0].isOutlined = true;
    EXPECT_NEAR(top(part), 0.051, 1e-9);
    part->meshes[0].level = 3;
    EXPECT_NEAR(top(part), 0.151, 1e-9);
    EXPECT_TRUE(write({node()}, false).tile.box.isEmpty());
}

TEST_F(FltTileFilesTest, hasNoCornerThatIsNowhereInItsBox)
{
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Node const part = sized(1);
        SbVec3f& corner = part->meshes[0].positions[2];
        corner = SbVec3f(7, 7, 7);
        corner[static_cast<int>(axis)] = std::numeric_limits<float>::infinity();
        SbBox3d const box = write({part}, false).tile.box;
        EXPECT_NEAR(box.getMax()[0], 1, 0.01) << axis;
        EXPECT_NEAR(box.getMax()[1], 0, 0.01) << axis;
        EXPECT_NEAR(box.getMax()[2], 0, 0.01) << axis;
    }
}

TEST_F(FltTileFilesTest, tellsWhereOtherFilesStand)
{
    Node const file = node();
    file->become<FltVisualFile>().path = "tree.flt";
    Node const shown = node({file, file});
    shown->transform = {moved(5, 0, 0)};
    Node const hidden = node({file});
    hidden->isHidden = true;
    Node const copies = node({node({file})});
    copies->become<FltVisualCopies>({{moved(0, 1, 0), moved(0, 2, 0)}});
    options.addressOf = [](std::string const& path) { return std::optional("out/" + path + ".glb"); };
    auto const written = write({shown, hidden, copies, levels({node({file}), node({file})}, {10})}, false);
    std::vector<SbVec3d> places;
    for (FltTile::Reference const& reference : written.tile.references) {
        EXPECT_EQ(reference.file, "out/tree.flt.glb");
        places.emplace_back(reference.matrix[3][0], reference.matrix[3][1], reference.matrix[3][2]);
    }
    EXPECT_EQ(places, (std::vector<SbVec3d>{{5, 0, 0}, {5, 0, 0}, {0, 1, 0}, {0, 2, 0}, {0, 0, 0}}));
}

TEST_F(FltTileFilesTest, leavesOutFilesThatHaveNoAddress)
{
    Node const tree = node();
    tree->become<FltVisualFile>().path = "tree.flt";
    auto const references = [&] { return write({tree}, false).tile.references; };
    ASSERT_EQ(references().size(), 1U);
    EXPECT_EQ(references()[0].file, "tree.flt");
    options.addressOf = [](std::string const&) { return std::optional<std::string>(); };
    EXPECT_TRUE(references().empty());
}

TEST_F(FltTileFilesTest, hasLiftedFacesInItsBox)
{
    Node const marking = sized(100);
    marking->meshes[0].level = 2;
    auto const written = write({marking}, false);
    double highest = 0;
    for (ReadGltf::Corner const& corner : read("x.glb").corners())
        highest = std::max(highest, corner.place[1]);
    EXPECT_GT(highest, 0.01);
    EXPECT_GE(written.tile.box.getMax()[2], highest);
}

TEST_F(FltTileFilesTest, hasNeighboursMeetInATileset)
{
    FltVisual database;
    database.info.projection = 4;
    database.info.utmZone = 32;
    std::vector<FltTile> tiles;
    std::vector<SbVec3d> shared;
    for (double const side : {-1.0, 1.0}) {
        database.root = node(
            {triangle({{600000, 5400000, 50}, {600000 + 4000 * side, 5402000, 90}, {600000, 5404000, 70}})});
        FltGlobeTile const placed = FltGlobe::place(database);
        options.globe = placed.frame.place();
        std::string const name = side < 0 ? "west.glb" : "east.glb";
        tiles.push_back(FltTileFiles::write(placed.visual, folder / name, options, true).tile);
    }
    FltTileset(tiles).write(folder / "tileset.json");
    CheckedTileset const tileset(folder / "tileset.json");
    for (std::string const name : {"west.glb", "east.glb"}) {
        CheckedTileset::Content const& content = tileset.of(name);
        for (ReadGltf::Corner const& corner : read(name).corners()) {
            // A viewer turns y up to z up, and then places the tile.
            SbVec3d place(corner.place[0], -corner.place[2], corner.place[1]);
            content.matrix.multVecMatrix(place, place);
            EXPECT_TRUE(CheckedTileset::isIn(place, content.box));
            shared.push_back(place);
        }
    }
    auto const south = *FltProjection(database.info).placeOf({600000, 5400000, 50});
    auto const north = *FltProjection(database.info).placeOf({600000, 5404000, 70});
    auto const near = [&](FltProjection::Place const& place) {
        return std::count_if(shared.begin(), shared.end(), [&](SbVec3d const& corner) {
            return OnEarth::distance(
                       corner, OnEarth::geocentric(place.latitude, place.longitude, place.height)) < 0.005;
        });
    };
    EXPECT_EQ(near(south), 2);
    EXPECT_EQ(near(north), 2);
}
