#include "visual/FltVisualWalk.h"

#include "support/CompleteDatabase.h"
#include "support/MadeNodes.h"
#include "visual/FltMeshIndices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <sstream>
#include <tuple>

namespace
{

using MadeNodes::node;

using Corner = std::array<double, 3>;
using Shape = std::vector<Corner>;
using LevelsOfDetail = FltVisualWalk::LevelsOfDetail;

double roundedTo(double value)
{
    return std::round(value * 1000) / 1000 + 0.0;
}

/// Triangles and pieces of lines in world coordinates, rounded, in an order of their own.
std::vector<Shape> shapesOf(std::shared_ptr<FltVisualNode const> const& root,
                            LevelsOfDetail levels = LevelsOfDetail::highest)
{
    std::vector<Shape> shapes;
    FltVisualWalk walk(root, levels);
    while (walk.next()) {
        FltMesh const& mesh = walk.mesh();
        auto const place = [&](std::uint32_t corner) -> Corner {
            SbVec3f const& position = mesh.positions[corner];
            SbVec3d const point =
                mesh.origin + SbVec3d(static_cast<double>(position[0]), static_cast<double>(position[1]),
                                      static_cast<double>(position[2]));
            SbVec3d world;
            walk.matrix().multVecMatrix(point, world);
            return {roundedTo(world[0]), roundedTo(world[1]), roundedTo(world[2])};
        };
        auto const add = [&](std::vector<std::uint32_t> const& corners, std::size_t each) {
            for (std::size_t at = 0; at < corners.size(); at += each) {
                Shape shape;
                for (std::size_t i = 0; i < each; ++i)
                    shape.push_back(place(corners[at + i]));
                shapes.push_back(std::move(shape));
            }
        };
        add(FltMeshIndices::triangles(mesh), 3);
        add(FltMeshIndices::lines(mesh), 2);
    }
    std::sort(shapes.begin(), shapes.end());
    return shapes;
}

/// The same as the toolkit draws them.
std::vector<Shape> shapesOf(DrawnScene const& drawn)
{
    std::vector<Shape> shapes;
    for (auto const* list : {&drawn.triangles, &drawn.lines})
        for (DrawnScene::Primitive const& each : *list) {
            Shape shape;
            for (SbVec3f const& point : each.points)
                shape.push_back({roundedTo(static_cast<double>(point[0])),
                                 roundedTo(static_cast<double>(point[1])),
                                 roundedTo(static_cast<double>(point[2]))});
            shapes.push_back(std::move(shape));
        }
    std::sort(shapes.begin(), shapes.end());
    return shapes;
}

/// What is seen of a database is what the toolkit draws of it.
void expectAsDrawn(CompleteDatabase& database, FltVisualConversion::Options const& options = {})
{
    std::vector<Shape> const walked = shapesOf(database.see(options).root);
    EXPECT_FALSE(walked.empty());
    EXPECT_EQ(walked, shapesOf(database.draw(options)));
}

using Records = std::vector<std::pair<std::string_view, FltWriter::Fields>>;

constexpr double quarterTurnAndMove[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 2, 0, 1, 1};

FltWriter::Fields matrix()
{
    return {{"matrix", std::vector<double>(std::begin(quarterTurnAndMove), std::end(quarterTurnAndMove))}};
}

/// A square below the first of some records, which the others belong to.
CompleteDatabase squareBelow(Records const& records)
{
    CompleteDatabase database;
    std::vector<double> const square = database.square(1, 2, 3);
    database.begin();
    for (auto const& [record, fields] : records)
        database.writer.add(record, fields);
    database.writer.push();
    database.object(square).writer.pop().pop();
    return database;
}

std::string placesOf(FltVisualWalk& walk)
{
    std::ostringstream text;
    while (walk.next()) {
        SbVec3d place;
        walk.matrix().multVecMatrix(walk.mesh().origin, place);
        text << walk.name() << " at " << place[0] << ' ' << place[1] << ' ' << place[2] << "; ";
    }
    return text.str();
}

std::shared_ptr<FltVisualNode> leaf(std::string const& name)
{
    auto node = std::make_shared<FltVisualNode>();
    node->name = name;
    node->meshes.emplace_back();
    return node;
}

SbMatrix moved(float x, float y, float z)
{
    SbMatrix matrix;
    matrix.setTranslate({x, y, z});
    return matrix;
}

SbMatrix scaled(float factor)
{
    SbMatrix matrix;
    matrix.setScale(factor);
    return matrix;
}

TEST(FltVisualWalk, childrenComeBeforeTheMeshesOfTheirNode)
{
    auto const root = leaf("top");
    root->children = {leaf("a"), leaf("b")};
    FltVisualWalk walk(root);
    EXPECT_EQ(placesOf(walk), "a at 0 0 0; b at 0 0 0; top at 0 0 0; ");
    EXPECT_FALSE(walk.next());
}

TEST(FltVisualWalk, thereIsNothingInNothing)
{
    EXPECT_FALSE(FltVisualWalk(nullptr).next());
    EXPECT_FALSE(FltVisualWalk(node({})).next());
}

TEST(FltVisualWalk, theLastMatrixOfANodeActsFirst)
{
    auto const root = leaf("a");
    root->meshes[0].origin = {1, 0, 0};
    root->transform = {moved(10, 0, 0), scaled(2)};
    FltVisualWalk walk(root);
    EXPECT_EQ(placesOf(walk), "a at 12 0 0; ");
}

TEST(FltVisualWalk, aPartThatStandsAtSeveralPlacesComesOnceForEach)
{
    auto const part = leaf("part");
    auto const left = node({part});
    auto const right = node({part});
    left->transform = {moved(-1, 0, 0)};
    right->transform = {moved(1, 0, 0)};
    FltVisualWalk walk(node({left, right}));
    EXPECT_EQ(placesOf(walk), "part at -1 0 0; part at 1 0 0; ");
}

TEST(FltVisualWalk, copiesStandInTheirOrderAtTheirPlaces)
{
    auto const copies = node({leaf("part")});
    copies->become<FltVisualCopies>({{moved(0, 0, 0), moved(0, 3, 0), moved(0, 6, 0)}});
    auto const root = node({copies});
    root->transform = {scaled(2)};
    FltVisualWalk walk(root);
    EXPECT_EQ(placesOf(walk), "part at 0 0 0; part at 0 6 0; part at 0 12 0; ");
}

TEST(FltVisualWalk, isInDoublesFarFromTheOrigin)
{
    auto const root = leaf("a");
    root->become<FltVisualScale>({0.3048});
    root->meshes[0].origin = {5000000.25, 0, 0};
    FltVisualWalk walk(root);
    ASSERT_TRUE(walk.next());
    SbVec3d place;
    walk.matrix().multVecMatrix(walk.mesh().origin, place);
    EXPECT_DOUBLE_EQ(place[0], 5000000.25 * 0.3048);
}

TEST(FltVisualWalk, aJointFarFromTheOriginMovesInDoubles)
{
    auto const root = leaf("a");
    FltVisualJoint& joint = root->become<FltVisualJoint>();
    joint.frame = moved(4000000, 2000000, 0);
    joint.yaw.current = 90;
    root->meshes[0].origin = {4000001, 2000000, 0};
    FltVisualWalk walk(root);
    ASSERT_TRUE(walk.next());
    SbVec3d place;
    walk.matrix().multVecMatrix(walk.mesh().origin, place);
    EXPECT_NEAR(place[0], 4000000, 1e-5);
    EXPECT_NEAR(place[1], 2000001, 1e-5);
}

TEST(FltVisualWalk, nameAndRecordAreThoseOfTheNearestNodeThatHasThem)
{
    auto const unnamed = leaf("");
    auto const named = node({unnamed});
    named->name = "door";
    named->record = {640, 2};
    FltVisualWalk walk(node({named}));
    ASSERT_TRUE(walk.next());
    EXPECT_EQ(walk.name(), "door");
    EXPECT_EQ(walk.record().offset, 640U);
    EXPECT_EQ(walk.record().file, 2U);
}

TEST(FltVisualWalk, withoutAnyNameItIsEmptyAndThereIsNoRecord)
{
    FltVisualWalk walk(leaf(""));
    ASSERT_TRUE(walk.next());
    EXPECT_EQ(walk.name(), "");
    EXPECT_EQ(walk.record().offset, FltVisualNode::Record::none);
}

TEST(FltVisualWalk, aSwitchShowsTheChildrenOfItsMask)
{
    auto const root = node({leaf("a"), nullptr, leaf("c"), leaf("d")});
    FltVisualSwitch& choice = root->become<FltVisualSwitch>();
    choice.masks = {0x3, 0xA};
    choice.wordsPerMask = 1;
    FltVisualWalk first(root);
    EXPECT_EQ(placesOf(first), "a at 0 0 0; ");
    choice.currentMask = 1;
    FltVisualWalk second(root);
    EXPECT_EQ(placesOf(second), "d at 0 0 0; ");
    choice.currentMask = 2;
    EXPECT_FALSE(FltVisualWalk(root).next());
}

TEST(FltVisualWalk, ofLevelsTheFinestTheCoarsestOrAllAreGoneOver)
{
    auto const root = node({nullptr, leaf("fine"), leaf("middle"), leaf("coarse"), nullptr});
    root->become<FltVisualLevels>();
    FltVisualWalk finest(root);
    EXPECT_EQ(placesOf(finest), "fine at 0 0 0; ");
    FltVisualWalk coarsest(root, LevelsOfDetail::lowest);
    EXPECT_EQ(placesOf(coarsest), "coarse at 0 0 0; ");
    FltVisualWalk all(root, LevelsOfDetail::all);
    EXPECT_EQ(placesOf(all), "fine at 0 0 0; middle at 0 0 0; coarse at 0 0 0; ");
}

TEST(FltVisualWalk, levelsThatDrawNothingDrawNothing)
{
    auto const root = node({nullptr, nullptr});
    root->become<FltVisualLevels>();
    for (LevelsOfDetail const levels : {LevelsOfDetail::highest, LevelsOfDetail::lowest, LevelsOfDetail::all})
        EXPECT_FALSE(FltVisualWalk(root, levels).next());
}

TEST(FltVisualWalk, hiddenMeshesArePassedOver)
{
    auto const root = leaf("a");
    root->meshes[0].isHidden = true;
    EXPECT_FALSE(FltVisualWalk(root).next());
}

TEST(FltVisualWalk, transformationsAreAsTheToolkitDrawsThem)
{
    CompleteDatabase database =
        squareBelow({{"Group", {}},
                     {"Translate", {{"deltaX", 3}}},
                     {"RotateAboutPoint", {{"KAxisOfRotation", 1}, {"angleToRotate", 30}}},
                     {"ScaleNonUniform", {{"XScaleFactor", 1}, {"YScaleFactor", 2}, {"ZScaleFactor", 1}}}});
    expectAsDrawn(database);
    CompleteDatabase stored = squareBelow({{"Group", {}}, {"Matrix", matrix()}});
    expectAsDrawn(stored);
}

TEST(FltVisualWalk, jointsAreAsTheToolkitDrawsThem)
{
    CompleteDatabase database = squareBelow({{"DOF",
                                              {{"XOriginOfDOFLocalCoordinateSystem", 3},
                                               {"YOriginOfDOFLocalCoordinateSystem", 1},
                                               {"XPointOnXAxisOfDOFLocalCoordinateSystem", 3},
                                               {"YPointOnXAxisOfDOFLocalCoordinateSystem", 2},
                                               {"XPointInXYPlaneOfDOFLocalCoordinateSystem", 2},
                                               {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 1},
                                               {"XCurrentValue", 2},
                                               {"currentPitch", 20},
                                               {"currentRoll", 30},
                                               {"currentYaw", 40},
                                               {"XCurrentScale", 2},
                                               {"YCurrentScale", 3}}},
                                             {"Matrix", matrix()}});
    expectAsDrawn(database);
}

TEST(FltVisualWalk, replicationsAreAsTheToolkitDrawsThem)
{
    CompleteDatabase database =
        squareBelow({{"Group", {}}, {"Replicate", {{"numberOfReplications", 3}}}, {"Matrix", matrix()}});
    expectAsDrawn(database);
    EXPECT_EQ(shapesOf(database.see().root).size(), 8U);
}

TEST(FltVisualWalk, instancesAreAsTheToolkitDrawsThem)
{
    CompleteDatabase database;
    std::vector<double> const square = database.square();
    database.begin().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    database.object(square).writer.pop();
    for (int copies : {0, 2}) {
        database.writer.add("Group")
            .add("Replicate", {{"numberOfReplications", copies}})
            .add("Matrix", matrix());
        database.writer.push().add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop();
    }
    database.writer.pop();
    expectAsDrawn(database);
    EXPECT_EQ(shapesOf(database.see().root).size(), 8U);
}

TEST(FltVisualWalk, scalesAreAsTheToolkitDrawsThem)
{
    CompleteDatabase feet(1570, {{"vertexCoordinateUnits", 4}});
    std::vector<double> const square = feet.square(10, 20, 30);
    feet.begin();
    feet.object(square).writer.pop();
    expectAsDrawn(feet);
    EXPECT_EQ(shapesOf(feet.see().root).front().front()[0], roundedTo(10 * 0.3048));
}

TEST(FltVisualWalk, linesAreAsTheToolkitDrawsThem)
{
    CompleteDatabase database;
    std::vector<double> const square = database.square();
    database.begin();
    database.object(square, CompleteDatabase::face({{"drawType", 3}}));
    database.writer.pop();
    expectAsDrawn(database);
}

TEST(FltVisualWalk, turningFacesStandAsTheyAreStored)
{
    for (int const kind : {2, 4}) {
        CompleteDatabase database;
        std::vector<double> const tree = database.polygon({{10, 5, 1}, {11, 6, 1}, {11, 6, 4}, {10, 5, 4}});
        database.begin();
        database.object(tree, CompleteDatabase::face({{"templateBillboard", kind}}));
        database.writer.pop();
        std::vector<Shape> const expected = {{{10, 5, 1}, {11, 6, 1}, {11, 6, 4}},
                                             {{10, 5, 1}, {11, 6, 4}, {10, 5, 4}}};
        EXPECT_EQ(shapesOf(database.see().root), expected) << kind;
    }
}

TEST(FltVisualWalk, switchesAreAsTheToolkitDrawsThem)
{
    CompleteDatabase database;
    std::vector<double> const low = database.square();
    std::vector<double> const high = database.square(0, 0, 5);
    database.begin().add("Switch", {{"indexOfCurrentMask", 1},
                                    {"numberOfMasks", 2},
                                    {"numberOf32BitWordsPerMask", 1},
                                    {"masks", {1, 2}}});
    database.writer.push();
    database.object(low).object(high).writer.pop().pop();
    expectAsDrawn(database);
    EXPECT_EQ(shapesOf(database.see().root).size(), 2U);
}

} // namespace

TEST(FltVisualWalk, goesOverTheFirstFrameOfAFlipBookAlone)
{
    CompleteDatabase database;
    std::vector<double> const first = database.square(), second = database.square(5);
    database.begin().add("Group", {{"flags", 0x02000000}}).push(); // backward
    database.object(first).object(second);
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    EXPECT_EQ(shapesOf(root), shapesOf(database.draw()));
    EXPECT_EQ(shapesOf(root).size(), 2U);
    EXPECT_EQ(shapesOf(root).front().front(), (Corner{0, 0, 0}));
}

TEST(FltVisualWalk, passesOverHiddenNodes)
{
    CompleteDatabase database;
    std::vector<double> const square = database.square();
    database.begin().add("Object", {{"flags", 0x80000000}}).push(); // not in daylight
    database.writer.face(square, CompleteDatabase::face()).pop();
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    EXPECT_EQ(root->children.at(0)->meshes.size(), 1U);
    EXPECT_TRUE(shapesOf(root).empty());
}

TEST(FltVisualWalk, goesOverCoarserLevelsThatStay)
{
    CompleteDatabase database;
    std::vector<double> const near = database.square(), far = database.square(5);
    database.begin();
    for (auto const& [nearest, farthest, square] : {std::tuple(0, 10, near), {10, 20, far}}) {
        database.writer
            .add("LOD",
                 {{"switchOutDistance", nearest}, {"switchInDistance", farthest}, {"flags", 0x40000000}})
            .push();
        database.object(square).writer.pop();
    }
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    EXPECT_EQ(shapesOf(root).size(), 4U);
    EXPECT_EQ(shapesOf(root, LevelsOfDetail::lowest).size(), 2U);
    EXPECT_EQ(shapesOf(root, LevelsOfDetail::all).size(), 4U);
}
