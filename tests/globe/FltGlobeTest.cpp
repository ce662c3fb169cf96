#include "globe/FltGlobe.h"

#include "OnEarth.h"
#include "loader/FltLoader.h"
#include "support/CompleteDatabase.h"
#include "support/Moved.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using Node = std::shared_ptr<FltVisualNode>;

Node node(std::vector<Node> children = {}, std::vector<SbDPMatrix> transform = {})
{
    auto made = std::make_shared<FltVisualNode>();
    made->children = std::move(children);
    made->transform = std::move(transform);
    made->senses.isStraight = true;
    return made;
}

/// A record of a node: those of another file come from a reference.
Node at(Node made, std::uint32_t file, std::uint64_t offset)
{
    made->record = {offset, file};
    return made;
}

/// A triangle that looks up, with a mesh of its own.
Node triangle(std::vector<SbVec3d> const& places)
{
    FltMesh mesh;
    mesh.origin = SbVec3d(SbVec3f(places.front()));
    for (SbVec3d const& place : places) {
        mesh.positions.push_back(SbVec3f(place - mesh.origin));
        mesh.normals.emplace_back(0.0F, 0.0F, 1.0F);
    }
    mesh.indices = {0, 1, 2, FltMesh::end};
    mesh.colors = {~0U};
    Node made = node();
    made->meshes = {mesh};
    return made;
}

/// A small triangle about zero.
Node model()
{
    return triangle({{-1, -1, 0}, {1, -1, 0}, {0, 1, 5}});
}

FltVisual visualOf(std::vector<Node> parts, int projection = 4, int zone = 32)
{
    FltVisual visual;
    visual.info.projection = projection;
    visual.info.utmZone = zone;
    visual.root = at(node(std::move(parts)), 0, 0);
    return visual;
}

FltVisual onFlatEarth(std::vector<Node> parts)
{
    FltVisual visual = visualOf(std::move(parts), 0);
    visual.info.originLatitude = 48;
    visual.info.originLongitude = 9;
    return visual;
}

/// Where a stored place is, from the middle of the earth.
SbVec3d onEarth(FltVisual const& visual, std::array<double, 3> const& stored)
{
    auto const place = FltProjection(visual.info).placeOf(stored);
    EXPECT_TRUE(place);
    return place ? OnEarth::geocentric(place->latitude, place->longitude, place->height) : SbVec3d();
}

void expectNear(SbVec3d const& one, SbVec3d const& other, double tolerance)
{
    EXPECT_LT(OnEarth::distance(one, other), tolerance);
}

std::uint64_t omitted(FltGlobeTile const& tile, std::string const& kind)
{
    for (FltOmission const& omission : tile.visual.omissions)
        if (omission.kind == kind)
            return omission.count;
    return 0;
}

} // namespace

TEST(FltGlobe, bendsAFlatTileToTheEarth)
{
    FltGlobeTile const tile =
        FltGlobe::place(onFlatEarth({triangle({{-50000, 0, 0}, {50000, 0, 0}, {0, 50000, 0}}),
                                     triangle({{0, -50000, 0}, {1, -50000, 0}, {0, -49999, 0}})}));
    std::vector<SbVec3f> const& corners = tile.visual.root->children[0]->meshes[0].positions;
    SbVec3d const& origin = tile.visual.root->children[0]->meshes[0].origin;
    EXPECT_NEAR(origin[2] + static_cast<double>(corners[0][2]), -195.6, 0.5)
        << "50 km away it is 196 m lower";
    EXPECT_NEAR(origin[2] + static_cast<double>(corners[2][2]), -196.3, 0.5);
    for (OnEarth::Corner const& corner : OnEarth::cornersOf(tile))
        EXPECT_NEAR(corner.normal.dot(corner.place) / corner.place.length(), 1, 1e-4);
}

TEST(FltGlobe, hasItsZeroInTheMiddleOfTheTile)
{
    FltVisual const visual =
        visualOf({triangle({{600000, 5400000, 100}, {602000, 5400000, 300}, {600000, 5403000, 200}})});
    FltGlobeTile const tile = FltGlobe::place(visual);
    SbVec3d zero;
    tile.frame.matrix().multVecMatrix(SbVec3d(0, 0, 0), zero);
    expectNear(zero, onEarth(visual, {601000, 5401500, 200}), 1e-3);
    EXPECT_EQ(tile.visual.metresPerUnit, 1);
}

TEST(FltGlobe, putsEachCornerWhereTheProjectionHasIt)
{
    FltVisual const visual =
        visualOf({triangle({{600000, 5400000, 100}, {610000, 5400000, 300}, {600000, 5412000, 200}})});
    std::vector<OnEarth::Corner> const corners = OnEarth::cornersOf(FltGlobe::place(visual));
    ASSERT_EQ(corners.size(), 3U);
    expectNear(corners[0].place, onEarth(visual, {600000, 5400000, 100}), 2e-3);
    expectNear(corners[1].place, onEarth(visual, {610000, 5400000, 300}), 2e-3);
    expectNear(corners[2].place, onEarth(visual, {600000, 5412000, 200}), 2e-3);
    auto const place = FltProjection(visual.info).placeOf({610000, 5400000, 300});
    EXPECT_GT(corners[1].normal.dot(OnEarth::upAt(place->latitude, place->longitude)), 0.9999999);
}

TEST(FltGlobe, hasNeighboursMeet)
{
    std::vector<SbVec3d> const edge = {{500000.25, 5400000.5, 100}, {500100.75, 5409000.125, 250}};
    FltVisual const west = visualOf({triangle({edge[0], edge[1], {490000, 5405000, 80}})});
    FltVisual const east = visualOf({triangle({edge[0], {512345, 5404000, 80}, edge[1]})});
    auto const ofWest = OnEarth::cornersOf(FltGlobe::place(west));
    auto const ofEast = OnEarth::cornersOf(FltGlobe::place(east));
    expectNear(ofWest[0].place, ofEast[0].place, 0.01);
    expectNear(ofWest[1].place, ofEast[2].place, 0.01);
}

TEST(FltGlobe, hasNeighboursInOtherProjectionsMeet)
{
    FltVisual const east =
        visualOf({triangle({{500000, 5400000, 100}, {510000, 5400000, 0}, {500000, 5410000, 0}})});
    SbVec3d const corner = onEarth(east, {500000, 5400000, 100});
    FltVisual const west =
        visualOf({triangle({corner, corner + SbVec3d(5000, 0, 0), corner + SbVec3d(0, 0, 4000)})}, 6);
    expectNear(OnEarth::cornersOf(FltGlobe::place(east))[0].place,
               OnEarth::cornersOf(FltGlobe::place(west))[0].place, 0.01);
}

TEST(FltGlobe, turnsNormalsWithTheNorthOfTheMap)
{
    // At the edge of a zone the map's north is 2.3 degrees from the true one.
    Node const slope = triangle({{720000, 5400000, 0}, {720100, 5400000, 0}, {720000, 5400100, 0}});
    for (SbVec3f& normal : slope->meshes[0].normals)
        normal = SbVec3f(0, 1, 0);
    FltVisual const visual = visualOf({slope});
    SbVec3d way = onEarth(visual, {720000, 5400010, 0}) - onEarth(visual, {720000, 5399990, 0});
    way.normalize();
    SbVec3d const normal = OnEarth::cornersOf(FltGlobe::place(visual))[0].normal;
    EXPECT_GT(normal.dot(way), 0.9999999);
}

TEST(FltGlobe, keepsTheShapeOfModelsAndHasThemStandUpright)
{
    Node const tree = at(model(), 0, 10);
    double const x = 700000, y = 5400000, z = 123;
    FltVisual const visual = visualOf(
        {at(node({tree}, {moved(x, y, z)}), 0, 100), at(node({tree}, {moved(x + 9000, y, z)}), 0, 200)});
    FltGlobeTile const tile = FltGlobe::place(visual);
    EXPECT_EQ(tile.visual.root->children[0]->children[0], tree) << "it is shared";
    auto const corners = OnEarth::cornersOf(tile);
    ASSERT_EQ(corners.size(), 6U);
    EXPECT_NEAR(OnEarth::distance(corners[0].place, corners[1].place), 2, 1e-6) << "no scale of the map";
    EXPECT_NEAR(OnEarth::distance(corners[3].place, corners[4].place), 2, 1e-6);
    auto const place = FltProjection(visual.info).placeOf({x + 9000, y, z});
    EXPECT_GT(corners[3].normal.dot(OnEarth::upAt(place->latitude, place->longitude)), 0.9999999);
    expectNear((corners[3].place + corners[4].place) / 2, onEarth(visual, {x + 9000, y - 1, z}), 2e-3);
}

TEST(FltGlobe, bendsReferencedTilesThatStandInTheCoordinatesOfTheDatabase)
{
    Node const tile = at(node({triangle({{0, 60000, 0}, {10, 60000, 0}, {0, 60010, 0}})}), 1, 0);
    FltVisual const visual =
        onFlatEarth({triangle({{0, -60000, 0}, {1, -60000, 0}, {0, -60001, 0}}), at(node({tile}), 0, 50)});
    expectNear(OnEarth::cornersOf(FltGlobe::place(visual))[3].place, onEarth(visual, {0, 60000, 0}), 5e-3);
}

TEST(FltGlobe, bendsReferencedTilesThatAreInAnotherUnit)
{
    SbDPMatrix feet;
    feet.setScale(0.3048);
    Node const tile = at(node({triangle({{0, 200000, 0}, {10, 200000, 0}, {0, 200010, 0}})}), 1, 0);
    FltVisual const visual = onFlatEarth(
        {triangle({{0, -60000, 0}, {1, -60000, 0}, {0, -60001, 0}}), at(node({tile}, {feet}), 0, 50)});
    FltGlobeTile const placed = FltGlobe::place(visual);
    expectNear(OnEarth::cornersOf(placed)[3].place, onEarth(visual, {0, 60960, 0}), 5e-3);
    EXPECT_NE(placed.visual.root->children[1]->children[0], tile) << "it is no model, which stays as it is";
}

TEST(FltGlobe, bendsWhatStandsInTwoUnitsTwice)
{
    SbDPMatrix feet;
    feet.setScale(0.3048);
    Node const tile = triangle({{0, 200000, 0}, {10, 200000, 0}, {0, 200010, 0}});
    FltVisual const visual = onFlatEarth({node({tile}, {feet}), node({tile}), node({tile}, {feet})});
    FltGlobeTile const placed = FltGlobe::place(visual);
    auto const corners = OnEarth::cornersOf(placed);
    ASSERT_EQ(corners.size(), 9U);
    expectNear(corners[0].place, onEarth(visual, {0, 60960, 0}), 2e-2);
    expectNear(corners[3].place, onEarth(visual, {0, 200000, 0}), 2e-2);
    expectNear(corners[6].place, onEarth(visual, {0, 60960, 0}), 2e-2);
    auto const& parts = placed.visual.root->children;
    EXPECT_EQ(parts[0]->children[0], parts[2]->children[0]);
}

TEST(FltGlobe, hasModelsStandUprightAtTheirZeroIfItIsNotFarAway)
{
    // From corner to corner it is 70 km long, and its middle lies 35 km from its zero.
    Node const pier = at(triangle({{0, 0, 0}, {1, 0, 0}, {0, 70000, 0}}), 1, 0);
    FltVisual const visual = onFlatEarth({at(node({pier}, {moved(0, 0, 7)}), 0, 50)});
    auto const corners = OnEarth::cornersOf(FltGlobe::place(visual));
    expectNear(corners[0].place, onEarth(visual, {0, 0, 7}), 1e-3);
    EXPECT_GT(corners[0].normal.dot(OnEarth::upAt(48, 9)), 0.9999999);
}

/// The records of two files have offsets of their own.
TEST(FltGlobe, knowsModelsByTheirFileAloneOrByTheirOffsetAlone)
{
    SbDPMatrix const far = moved(0, 50000, 7);
    for (Node const& pier : {at(model(), 1, 900), at(model(), 0, 10)}) {
        Node const stand = at(node({pier}, {far}), 0, 50);
        FltVisual const visual = onFlatEarth({stand, triangle({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})});
        FltGlobeTile const tile = FltGlobe::place(visual);
        Node const& inside = tile.visual.root->children[0]->children[0];
        EXPECT_EQ(pier->meshes[0].positions, inside->meshes[0].positions) << pier->record.file;
    }
    for (std::uint64_t const offset : {50U, 60U}) {
        FltVisual const own = onFlatEarth({at(node({at(model(), 0, offset)}, {far}), 0, 50)});
        FltGlobeTile const tile = FltGlobe::place(own);
        EXPECT_EQ(OnEarth::cornersOf(tile).size(), 3U);
        EXPECT_TRUE(tile.visual.root->children[0]->transform.empty()) << "it is bent";
    }
}

TEST(FltGlobe, knowsModelsBySeveralPlacesAlone)
{
    Node const tree = model();
    FltVisual const visual =
        onFlatEarth({node({tree}, {moved(0, 50000, 0)}), node({tree}, {moved(0, -50000, 0)})});
    auto const parts = FltGlobe::place(visual).visual.root->children;
    EXPECT_EQ(parts[0]->children[0], tree) << "it stays as it is";
    EXPECT_EQ(parts[1]->children[0], tree);
}

TEST(FltGlobe, hasNoMirrorAroundWhatWasWorkedIn)
{
    Node const part = triangle({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    part->senses.isStraight = false;
    part->senses.isMirrored = true;
    FltVisual const visual = onFlatEarth({part});
    EXPECT_TRUE(FltGlobe::place(visual).visual.root->children[0]->senses.isStraight);
}

TEST(FltGlobe, keepsTheGapsAmongTheChildrenOfSwitchesAlone)
{
    Node const choice = node({nullptr, model()}), pages = node({nullptr, model()}),
               group = node({nullptr, model()});
    choice->become<FltVisualSwitch>();
    pages->become<FltVisualFlipBook>();
    auto const parts = FltGlobe::place(onFlatEarth({choice, pages, group})).visual.root->children;
    EXPECT_EQ(parts[0]->children.size(), 2U);
    EXPECT_EQ(parts[1]->children.size(), 2U);
    EXPECT_EQ(parts[2]->children.size(), 1U);
}

TEST(FltGlobe, placesTextsAndOtherFilesAsAWhole)
{
    Node const sign = node(), other = node(), turning = node();
    sign->become<FltVisualText>().place = SbVec3d(0, 60000, 5);
    other->become<FltVisualFile>({"other.flt"});
    turning->become<FltVisualTurning>();
    FltVisual const visual =
        onFlatEarth({triangle({{0, -60000, 0}, {1, -60000, 0}, {0, -60001, 0}}), sign,
                     node({other}, {moved(0, 40000, 0)}), node({turning}, {moved(0, -40000, 0)})});
    FltGlobeTile const tile = FltGlobe::place(visual);
    auto const placeOf = [&](Node const& stand, SbVec3d const& place) {
        EXPECT_EQ(stand->transform.size(), 1U);
        SbVec3d result;
        (stand->transform.front() * tile.frame.matrix()).multVecMatrix(place, result);
        return result;
    };
    auto const& parts = tile.visual.root->children;
    ASSERT_EQ(parts.size(), 4U);
    EXPECT_EQ(parts[1]->children, std::vector<Node>{sign});
    expectNear(placeOf(parts[1], {0, 60000, 5}), onEarth(visual, {0, 60000, 5}), 1e-3);
    EXPECT_EQ(parts[2]->children, std::vector<Node>{other});
    expectNear(placeOf(parts[2], {0, 0, 0}), onEarth(visual, {0, 40000, 0}), 1e-3);
    EXPECT_EQ(parts[3]->children, std::vector<Node>{turning});
    expectNear(placeOf(parts[3], {0, 0, 0}), onEarth(visual, {0, -40000, 0}), 1e-3);
}

TEST(FltGlobe, placesModelsByTheirMiddleIfTheirZeroIsFarAway)
{
    Node const far = at(triangle({{0, 90000, 0}, {10, 90000, 0}, {0, 90010, 0}}), 1, 0);
    FltVisual const visual = onFlatEarth({at(node({far}, {moved(0, 0, 7)}), 0, 50)});
    expectNear(OnEarth::cornersOf(FltGlobe::place(visual))[0].place, onEarth(visual, {0, 90000, 7}), 0.1);
}

TEST(FltGlobe, bendsWhatStandsInAMatrixOfTheDatabaseItself)
{
    FltVisual const visual = visualOf({at(
        node({at(triangle({{0, 0, 0}, {9000, 0, 0}, {0, 9000, 0}}), 0, 60)}, {moved(600000, 5400000, 10)}), 0,
        50)});
    auto const corners = OnEarth::cornersOf(FltGlobe::place(visual));
    expectNear(corners[1].place, onEarth(visual, {609000, 5400000, 10}), 2e-3);
    expectNear(corners[2].place, onEarth(visual, {600000, 5409000, 10}), 2e-3);
}

TEST(FltGlobe, turnsFacesRoundThatStandInAMirror)
{
    SbDPMatrix mirror = SbDPMatrix::identity();
    mirror[0][0] = -1;
    FltVisual const visual = visualOf({at(
        node({at(triangle({{0, 0, 0}, {9, 0, 0}, {0, 9, 0}}), 0, 60)}, {moved(500000, 5000000, 0), mirror}),
        0, 50)});
    FltGlobeTile const tile = FltGlobe::place(visual);
    FltMesh const& mesh = tile.visual.root->children[0]->children[0]->meshes[0];
    SbVec3d const a(mesh.positions[static_cast<std::size_t>(mesh.indices[0])]);
    SbVec3d const b(mesh.positions[static_cast<std::size_t>(mesh.indices[1])]);
    SbVec3d const c(mesh.positions[static_cast<std::size_t>(mesh.indices[2])]);
    EXPECT_GT((b - a).cross(c - a)[2], 0) << "it is seen from above";
    EXPECT_GT(mesh.normals[0][2], 0.99F);
    EXPECT_FALSE(tile.visual.root->children[0]->children[0]->senses.isMirrored);
}

TEST(FltGlobe, turnsEachFaceRoundThatStandsInAMirrorButNoLine)
{
    SbDPMatrix mirror = SbDPMatrix::identity();
    mirror[0][0] = -1;
    Node part = triangle({{0, 0, 0}, {9, 0, 0}, {0, 9, 0}});
    part->meshes[0].indices = {0, 1, 2, FltMesh::end, 1, 2, 0, FltMesh::end, 2, 0, 1};
    part->meshes.push_back(part->meshes[0]);
    part->meshes[1].kind = FltMesh::Kind::lines;
    std::vector<std::int32_t> const stored = part->meshes[0].indices;
    FltVisual const visual =
        visualOf({at(node({at(std::move(part), 0, 60)}, {moved(500000, 5000000, 0), mirror}), 0, 50)});
    FltGlobeTile const tile = FltGlobe::place(visual);
    std::vector<FltMesh> const& meshes = tile.visual.root->children[0]->children[0]->meshes;
    EXPECT_EQ(meshes[0].indices,
              (std::vector<std::int32_t>{2, 1, 0, FltMesh::end, 0, 2, 1, FltMesh::end, 1, 0, 2}));
    EXPECT_EQ(meshes[1].indices, stored);
}

TEST(FltGlobe, knowsAVisualThatWasMovedAndOneInAnotherUnit)
{
    FltVisual visual = visualOf({triangle({{0, 0, 0}, {100, 0, 0}, {0, 100, 0}})});
    visual.info.offset[0] = 600000;
    visual.info.offset[1] = 5400000;
    expectNear(OnEarth::cornersOf(FltGlobe::place(visual))[1].place, onEarth(visual, {600100, 5400000, 0}),
               2e-3);
    visual.info.unit = FltDatabaseInfo::Unit::feet;
    visual.metresPerUnit = 0.3048;
    visual.info.offset[0] = 600000 / 0.3048;
    visual.info.offset[1] = 5400000 / 0.3048;
    FltGlobeTile const tile = FltGlobe::place(visual);
    expectNear(OnEarth::cornersOf(tile)[1].place,
               onEarth(visual, {600000 / 0.3048 + 100, 5400000 / 0.3048, 0}), 2e-3);
    EXPECT_EQ(tile.visual.info.offset[0], 0);
}

TEST(FltGlobe, movesJointsAsAWhole)
{
    Node const joint = node({triangle({{600000, 5400000, 0}, {600001, 5400000, 0}, {600000, 5400001, 0}})});
    joint->become<FltVisualJoint>().frame = moved(600000, 5400000, 0);
    FltVisual const visual = visualOf({joint});
    FltGlobeTile const tile = FltGlobe::place(visual);
    EXPECT_EQ(tile.visual.root->children[0], joint);
    expectNear(OnEarth::cornersOf(tile)[1].place, onEarth(visual, {600001, 5400000, 0}), 1e-3);
}

TEST(FltGlobe, placesEachCopyByItself)
{
    Node const copies = node({triangle({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}})});
    copies->become<FltVisualCopies>({{SbDPMatrix::identity(), moved(0, 90000, 0)}});
    FltVisual const visual = onFlatEarth({copies});
    auto const corners = OnEarth::cornersOf(FltGlobe::place(visual));
    ASSERT_EQ(corners.size(), 6U);
    expectNear(corners[5].place, onEarth(visual, {0, 90001, 0}), 2e-2);
}

TEST(FltGlobe, placesCopiesOfOnePartAlone)
{
    Node const part = model();
    auto const copiesOf = [](std::vector<Node> children) {
        Node copies = node(std::move(children));
        copies->become<FltVisualCopies>({{SbDPMatrix::identity()}});
        return copies;
    };
    FltGlobeTile const tile = FltGlobe::place(
        onFlatEarth({copiesOf({}), copiesOf({nullptr}), copiesOf({part, model()}), copiesOf({part})}));
    auto const& parts = tile.visual.root->children;
    ASSERT_EQ(parts.size(), 4U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(parts[i]->children.empty()) << i;
        EXPECT_EQ(parts[i]->as<FltVisualCopies>(), nullptr) << i;
    }
    EXPECT_EQ(parts[3]->children, std::vector<Node>{part});
    ASSERT_NE(parts[3]->as<FltVisualCopies>(), nullptr);
    EXPECT_EQ(parts[3]->as<FltVisualCopies>()->places.size(), 1U);
}

TEST(FltGlobe, countsLightsAndCopiesThatHaveNoPlace)
{
    Node const lamp = node({}, {moved(9e6, 0, 0)}), copies = node({model()});
    lamp->become<FltVisualLight>().kind = FltVisualLight::Kind::local;
    copies->become<FltVisualCopies>({{moved(500000, 5000000, 0), moved(9e6, 0, 0)}});
    FltVisual const visual = visualOf(
        {triangle({{500000, 5000000, 0}, {500001, 5000000, 0}, {500000, 5000001, 0}}), lamp, copies});
    FltGlobeTile const tile = FltGlobe::place(visual);
    EXPECT_EQ(omitted(tile, "parts that have no place on the earth"), 2U);
    EXPECT_EQ(tile.visual.root->children[2]->as<FltVisualCopies>()->places.size(), 1U);
}

TEST(FltGlobe, turnsLightsAndPlacesThem)
{
    Node const sun = node();
    sun->become<FltVisualLight>().direction = SbVec3f(0, 0, -1);
    Node const lamp = node();
    FltVisualLight& light = lamp->become<FltVisualLight>();
    light.kind = FltVisualLight::Kind::local;
    light.position = SbVec3d(0, 50000, 20);
    FltVisual const visual = onFlatEarth({lamp, sun, triangle({{-10, 0, 0}, {10, 0, 0}, {0, 0, 10}})});
    FltGlobeTile const tile = FltGlobe::place(visual);
    SbVec3d place;
    tile.frame.matrix().multVecMatrix(tile.visual.root->children[0]->as<FltVisualLight>()->position, place);
    expectNear(place, onEarth(visual, {0, 50000, 20}), 1e-3);
    EXPECT_LT(tile.visual.root->children[1]->as<FltVisualLight>()->direction[2], -0.999F);
}

TEST(FltGlobe, placesTheCentresOfLevels)
{
    Node const levels = node({model(), nullptr}, {moved(0, 2000, 0)});
    FltVisualLevels& content = levels->become<FltVisualLevels>();
    content.distances = {500};
    content.center = SbVec3f(0, 100, 0);
    FltVisual visual = onFlatEarth({levels});
    FltGlobeTile const tile = FltGlobe::place(visual);
    auto const* const placed = tile.visual.root->children[0]->as<FltVisualLevels>();
    ASSERT_NE(placed, nullptr);
    ASSERT_TRUE(placed->center);
    SbVec3d center;
    tile.frame.matrix().multVecMatrix(SbVec3d(*placed->center), center);
    expectNear(center, onEarth(visual, {0, 2100, 0}), 1e-3);
    EXPECT_EQ(tile.visual.root->children[0]->children.size(), 2U) << "the end of the range is kept";
    EXPECT_EQ(placed->distances, std::vector<double>{500});
}

TEST(FltGlobe, hasLevelsWithoutACentreCountFromTheirZero)
{
    Node const levels = node({model()}, {moved(0, 2000, 0)});
    levels->become<FltVisualLevels>();
    FltVisual const visual = onFlatEarth({levels});
    FltGlobeTile const tile = FltGlobe::place(visual);
    auto const* const placed = tile.visual.root->children[0]->as<FltVisualLevels>();
    ASSERT_TRUE(placed != nullptr && placed->center);
    SbVec3d center;
    tile.frame.matrix().multVecMatrix(SbVec3d(*placed->center), center);
    expectNear(center, onEarth(visual, {0, 2000, 0}), 1e-3);
}

TEST(FltGlobe, hasTheDistancesOfLevelsInMetres)
{
    Node const levels = node({model(), nullptr});
    levels->become<FltVisualLevels>().distances = {500, 1000};
    FltVisual visual = onFlatEarth({levels});
    visual.info.unit = FltDatabaseInfo::Unit::feet;
    visual.metresPerUnit = 0.3048;
    FltGlobeTile const tile = FltGlobe::place(visual);
    std::vector<double> const& distances = tile.visual.root->children[0]->as<FltVisualLevels>()->distances;
    ASSERT_EQ(distances.size(), 2U);
    EXPECT_NEAR(distances[0], 152.4, 1e-9);
    EXPECT_NEAR(distances[1], 304.8, 1e-9);
}

TEST(FltGlobe, takesDegreesForWhatTheyAreButModelsInMetres)
{
    FltVisual const visual = visualOf({triangle({{9, 48, 5}, {9.125, 48, 5}, {9, 48.125, 5}}),
                                       at(node({at(model(), 1, 0)}, {moved(9.0625, 48.0625, 100)}), 0, 50)},
                                      5);
    auto const corners = OnEarth::cornersOf(FltGlobe::place(visual));
    expectNear(corners[1].place, OnEarth::geocentric(48, 9.125, 5), 2e-3);
    EXPECT_NEAR(OnEarth::distance(corners[3].place, corners[4].place), 2, 1e-6);
}

TEST(FltGlobe, saysWhatItDoesNotKnow)
{
    FltVisual const unknown = visualOf({model()}, 9);
    try {
        FltGlobe::place(unknown);
        FAIL();
    } catch (FltGlobeError const& error) {
        EXPECT_STREQ(error.what(), "the database can't be put on the globe: unknown projection, number 9");
    }
    EXPECT_THROW(FltGlobe::place(visualOf({model()}, 4, 0)), FltGlobeError) << "UTM without a zone";
    EXPECT_THROW(FltGlobe::place(visualOf({triangle({{5e8, 5e8, 0}, {5e8, 5e8, 1}, {5e8, 6e8, 0}})})),
                 FltGlobeError);
}

TEST(FltGlobe, saysThatThereIsNoShiftOfTheDatum)
{
    FltVisual visual = onFlatEarth({model()});
    EXPECT_TRUE(FltGlobe::place(visual).remarks.empty());
    visual.info.ellipsoid = 2;
    ASSERT_EQ(FltGlobe::place(visual).remarks.size(), 1U);
    EXPECT_NE(FltGlobe::place(visual).remarks[0].find("on Bessel"), std::string::npos);
}

TEST(FltGlobe, countsWhatHasNoPlace)
{
    Node const astray = at(model(), 1, 0);
    FltVisual visual = visualOf({triangle({{500000, 5000000, 0}, {500001, 5000000, 0}, {500000, 5000001, 0}}),
                                 at(node({astray}, {moved(9e6, 0, 0)}), 0, 50)});
    visual.root->children[0]->meshes[0].positions[1][0] = std::numeric_limits<float>::quiet_NaN();
    FltGlobeTile const tile = FltGlobe::place(visual);
    EXPECT_EQ(omitted(tile, "corners that have no place on the earth"), 1U);
    EXPECT_EQ(omitted(tile, "parts that have no place on the earth"), 1U);
    EXPECT_EQ(tile.visual.root->children[1]->children.size(), 0U);
    expectNear(OnEarth::cornersOf(tile)[0].place, onEarth(visual, {500000, 5000000, 0}), 1e-3);
}

TEST(FltGlobe, takesAnEmptyVisualForItsZero)
{
    FltVisual visual = onFlatEarth({});
    EXPECT_NEAR(FltGlobe::place(visual).frame.place().latitude, 48, 1e-9);
    visual.root = nullptr;
    EXPECT_EQ(FltGlobe::place(visual).visual.root, nullptr);
}

TEST(FltGlobe, bendsPartsThatStandInManyPlacesOnce)
{
    Node const shared = triangle({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    Node both = node({shared, shared});
    for (int level = 0; level < 60; ++level)
        both = node({both, both});
    FltVisual const visual = onFlatEarth({both});
    // Its paths are more than anybody can go.
    Node const placed = std::const_pointer_cast<FltVisualNode>(FltGlobe::place(visual).visual.root);
    EXPECT_EQ(placed->children[0]->children[0], placed->children[0]->children[1]);
}

TEST(FltGlobe, placesADatabaseWithInstances)
{
    CompleteDatabase database(1580, {{"projectionType", 4}, {"utmZone", 33}});
    std::vector<double> const ground =
        database.polygon({{400000, 5700000, 10}, {409000, 5700000, 10}, {400000, 5709000, 10}});
    std::vector<double> const house = database.square();
    FltWriter& flt = database.begin();
    flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 3}}).push();
    database.object(house);
    flt.pop();
    database.object(ground);
    flt.add("Group", {{"idASCII", "town"}}).push();
    for (double const x : {401000.0, 405000.0})
        flt.add("InstanceReference", {{"instanceDefinitionNumber", 3}})
            .add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 5701000, 10, 1}}});
    flt.pop().pop();
    FltLoader loader;
    FltVisual const visual = loader.loadVisual(database.folder.write("model.flt", flt.bytes()));
    auto const corners = OnEarth::cornersOf(FltGlobe::place(visual));
    ASSERT_EQ(corners.size(), 3U + 4 + 4);
    auto const has = [&](SbVec3d const& place) {
        return std::any_of(corners.begin(), corners.end(), [&](OnEarth::Corner const& corner) {
            return OnEarth::distance(corner.place, place) < 0.01;
        });
    };
    EXPECT_TRUE(has(onEarth(visual, {409000, 5700000, 10})));
    EXPECT_TRUE(has(onEarth(visual, {401000, 5701000, 10})));
    EXPECT_TRUE(has(onEarth(visual, {405000, 5701000, 10})));
}
