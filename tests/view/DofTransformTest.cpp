#include "view/DofTransform.h"

#include "LoadedViewDatabase.h"

#include <Inventor/SbVec3f.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

SbVec3f moved(DofTransform const& dof, DofTransform::Values const& values, SbVec3f const& point)
{
    SbVec3f result;
    dof.matrix(values).multVecMatrix(point, result);
    return result;
}

void expectAt(SbVec3f const& expected, SbVec3f const& point)
{
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(expected[axis], point[axis], 1e-4f) << "axis " << axis;
}

constexpr DofTransform::Values neutral = {0, 0, 0, 0, 0, 0, 1, 1, 1};

TEST(DofTransformTest, LeavesPointsWhereTheyAreWithNeutralValues)
{
    DofTransform const dof(Json{{"XOriginOfDOFLocalCoordinateSystem", 5.0}});
    expectAt({3, 4, 5}, moved(dof, neutral, {3, 4, 5}));
}

TEST(DofTransformTest, TurnsAboutTheOriginOfTheRecord)
{
    DofTransform const dof(Json{{"XOriginOfDOFLocalCoordinateSystem", 10.0}});
    expectAt({10, 1, 0}, moved(dof, {0, 0, 0, 0, 0, 90, 1, 1, 1}, {11, 0, 0}));  // yaw about z
    expectAt({10, 0, 1}, moved(dof, {0, 0, 0, 90, 0, 0, 1, 1, 1}, {10, 1, 0}));  // pitch about x
    expectAt({10, 0, -1}, moved(dof, {0, 0, 0, 0, 90, 0, 1, 1, 1}, {11, 0, 0})); // roll about y
}

TEST(DofTransformTest, ScalesFirstThenRollsPitchesYawsAndMovesAtLast)
{
    DofTransform const dof(Json::object());
    // (1,0,0) scaled to (2,0,0), rolled to (0,0,-2), pitched to (0,2,0), yawed to (-2,0,0), moved by (7,0,0)
    expectAt({5, 0, 0}, moved(dof, {7, 0, 0, 90, 90, 90, 2, 1, 1}, {1, 0, 0}));
}

TEST(DofTransformTest, TakesTheAxesOfTheRecord)
{
    // x points along the parent's y, y along its -x
    DofTransform const dof(Json{{"YPointOnXAxisOfDOFLocalCoordinateSystem", 1.0},
                                {"XPointInXYPlaneOfDOFLocalCoordinateSystem", -1.0}});
    expectAt({0, 3, 0}, moved(dof, {3, 0, 0, 0, 0, 0, 1, 1, 1}, {0, 0, 0}));
    expectAt({0, 5, 0}, moved(dof, {0, 0, 0, 0, 0, 0, 5, 1, 1}, {0, 1, 0}));
}

TEST(DofTransformTest, TakesAScaleOfZeroAsOne)
{
    DofTransform const dof(Json::object());
    EXPECT_EQ(1, dof.current()[6]);
    expectAt({1, 2, 3}, moved(dof, {0, 0, 0, 0, 0, 0, 0, 0, 0}, {1, 2, 3}));
}

TEST(DofTransformTest, SurvivesPointsThatMakeNoAxes)
{
    DofTransform const dof(Json{{"XOriginOfDOFLocalCoordinateSystem", 1.0},
                                {"XPointOnXAxisOfDOFLocalCoordinateSystem", 1.0},
                                {"YOriginOfDOFLocalCoordinateSystem", "NaN"}});
    expectAt({3, 4, 5}, moved(dof, neutral, {3, 4, 5}));
}

TEST(DofTransformTest, KnowsTheLimitsOfTheRecord)
{
    DofTransform const dof(Json{{"minimumPitch", -10.0},
                                {"maxPitch", 20.0},
                                {"incrementInPitch", 2.5},
                                {"flags", {{"word", 0}, {"pitchRotationIsLimited", true}}}});
    DofValue const& pitch = dof.values()[3];
    EXPECT_EQ(-10, pitch.least);
    EXPECT_EQ(20, pitch.most);
    EXPECT_EQ(2.5, pitch.step);
    EXPECT_TRUE(pitch.isLimited);
    EXPECT_FALSE(dof.values()[4].isLimited);
}

using DofMoverTest = LoadedViewDatabase;

TEST_F(DofMoverTest, TurnsTheNodesBelowTheRecordInTheScene)
{
    auto const boxOf = [&] {
        SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
        action.apply(node("door"));
        return action.getBoundingBox();
    };
    EXPECT_NEAR(20, boxOf().getMax()[0], 1e-3f);

    SoMatrixTransform* const mover = loaded.moverOf(record("door"));
    ASSERT_NE(nullptr, mover);
    DofTransform const dof(loaded.records.fieldsOf(record("door")).front()["fields"]);
    mover->matrix = dof.matrix({0, 0, 0, 0, 0, 90, 1, 1, 1});
    EXPECT_NEAR(10, boxOf().getMax()[0], 1e-3f);
    EXPECT_NEAR(10, boxOf().getMax()[1], 1e-3f);
}

TEST_F(DofMoverTest, HasNothingToMoveForOtherRecords)
{
    EXPECT_EQ(nullptr, loaded.moverOf(record("base")));
}

} // namespace
