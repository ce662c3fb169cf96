#include "visual/FltLiftedFaces.h"

#include <gtest/gtest.h>

namespace
{

/// A square in the plane of x and y that is seen from above.
FltMesh square(float size, std::uint8_t level)
{
    FltMesh mesh;
    mesh.level = level;
    mesh.positions = {{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}};
    mesh.indices = {0, 1, 2, 3, FltMesh::end};
    return mesh;
}

float heightOf(FltMesh const& mesh)
{
    return FltLiftedFaces::positions(mesh, 0.01)[2][2];
}

} // namespace

TEST(FltLiftedFaces, standWhereTheyAreStoredIfTheyLieOnNone)
{
    EXPECT_EQ(FltLiftedFaces::positions(square(10, 0), 1), square(10, 0).positions);
    EXPECT_FALSE(FltLiftedFaces::areLifted(square(10, 0)));
    EXPECT_TRUE(FltLiftedFaces::areLifted(square(10, 1)));
    FltMesh points = square(10, 1);
    points.kind = FltMesh::Kind::points;
    EXPECT_EQ(FltLiftedFaces::positions(points, 1), points.positions);
}

TEST(FltLiftedFaces, standInFrontOfTheirFaceByTheirLevel)
{
    EXPECT_FLOAT_EQ(heightOf(square(10, 1)), 0.01F);
    EXPECT_FLOAT_EQ(heightOf(square(10, 2)), 2 * heightOf(square(10, 1)));
    FltMesh below = square(10, 1);
    below.indices = {3, 2, 1, 0, FltMesh::end};
    EXPECT_LT(heightOf(below), 0.0F) << "it is seen from below";
}

TEST(FltLiftedFaces, standNoMoreThanFiveCentimetresHigher)
{
    EXPECT_DOUBLE_EQ(FltLiftedFaces::liftOfALevel(10, 0.001, 1), 0.01);
    EXPECT_DOUBLE_EQ(FltLiftedFaces::liftOfALevel(100'000, 0.001, 1), 0.05);
    EXPECT_DOUBLE_EQ(FltLiftedFaces::liftOfALevel(1'000'000, 0.001, 0.001), 50)
        << "of a thousandth of a metre each";
}

TEST(FltLiftedFaces, standBehindTheLinesOverThem)
{
    FltMesh outlined = square(10, 0);
    outlined.isOutlined = true;
    EXPECT_FLOAT_EQ(heightOf(outlined), -0.005F);
}

TEST(FltLiftedFaces, withoutAnAreaStayWhereTheyAre)
{
    FltMesh flat = square(0, 1);
    EXPECT_EQ(heightOf(flat), 0.0F);
    flat.indices = {0, FltMesh::end, FltMesh::end, 1, 2};
    EXPECT_EQ(heightOf(flat), 0.0F);
}
