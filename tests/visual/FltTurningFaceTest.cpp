#include "visual/FltTurningFace.h"

#include <cmath>
#include <gtest/gtest.h>

namespace
{

/// An upright rectangle that looks along y.
std::vector<SbVec3d> const wall = {{12, 5, 1}, {10, 5, 1}, {10, 5, 4}, {12, 5, 4}};

void expectPlace(FltTurningFace const& face, SbVec3d const& point, SbVec3d const& expected)
{
    EXPECT_LT((face.placement.place(point) - expected).length(), 1e-9);
}

} // namespace

TEST(FltTurningFace, standsOnTheMiddleOfItsLowerEdge)
{
    FltTurningFace const face(wall, false);
    EXPECT_EQ(face.turning().foot, SbVec3d(11, 5, 1));
    EXPECT_FALSE(face.turning().isAboutPoint);
    EXPECT_TRUE(FltTurningFace(wall, true).turning().isAboutPoint);
    EXPECT_EQ(face.box, SbBox3f(SbVec3f(10, 5, 1), SbVec3f(12, 5, 4)));
}

TEST(FltTurningFace, looksAlongMinusYWithItsUpUpwards)
{
    FltTurningFace const face(wall, false);
    expectPlace(face, {12, 5, 1}, {-1, 0, 0});
    expectPlace(face, {10, 5, 4}, {1, 0, 3});
}

TEST(FltTurningFace, staysLeaningWhereItTurnsAboutAnAxisAlone)
{
    std::vector<SbVec3d> const leaning = {{0, 0, 0}, {2, 0, 0}, {2, 3, 3}, {0, 3, 3}};
    expectPlace(FltTurningFace(leaning, false), {1, 3, 3}, {0, 1.5, 3});
    SbVec3d const raised = FltTurningFace(leaning, true).placement.place({1, 3, 3});
    EXPECT_NEAR(raised[1] - FltTurningFace(leaning, true).placement.place({1, 0, 0})[1], 0, 1e-9);
}

TEST(FltTurningFace, takesNorthForUpWhereItLooksStraightUp)
{
    std::vector<SbVec3d> const lying = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    FltTurningFace const face(lying, true);
    SbVec3d const edge = face.placement.turn({0, 1, 0});
    EXPECT_NEAR(edge[2], 1, 1e-9);
}

TEST(FltTurningFace, takesNorthForUpWhereItLeansByLessThanAMillionth)
{
    auto const upOf = [](double leaning) {
        // Its normal is (leaning, leaning, 1e6), or as much the other way.
        std::vector<SbVec3d> const corners = {{0, 0, 0}, {1e6, 0, -leaning}, {0, 1, -leaning * 1e-6}};
        return FltTurningFace(corners, true).placement.turn({0, 1, 0})[2];
    };
    for (double const way : {-1.0, 1.0}) {
        EXPECT_NEAR(upOf(way * 0.49), 1, 1e-5);
        EXPECT_NEAR(upOf(way * 0.51), -way * std::sqrt(0.5), 1e-5);
    }
    std::vector<SbVec3d> const justLeaning = {{0, 0, 0}, {1e6, 0, -1}, {0, 1, 0}};
    EXPECT_NEAR(FltTurningFace(justLeaning, true).placement.turn({0, 1, 0})[2], 0, 1e-5);
}

TEST(FltTurningFace, tellsTheTurnThatBringsStoredDirectionsIntoItsOwn)
{
    FltTurningFace const face(wall, false);
    FltVisualTurning const turning = face.turning();
    SbVec3d const turned = face.placement.turn({0, 1, 0});
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(turning.rows[i][1], turned[i]);
    EXPECT_NEAR(turned[1], -1, 1e-9);
}
