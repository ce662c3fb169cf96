#include "model/FltBowTie.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace
{

using Corners = std::array<SbVec3d, 4>;

Corners turned(Corners const& corners, std::size_t by)
{
    Corners result;
    for (std::size_t i = 0; i < 4; ++i)
        result[i] = corners[(i + by) % 4];
    return result;
}

/// Twice the areas of both triangles, as vectors along their normals.
std::array<SbVec3d, 2> normalsOf(FltBowTie const& shape, Corners const& corners)
{
    auto const first = static_cast<std::size_t>(shape.first);
    SbVec3d const middle = corners[first] + (corners[first + 1] - corners[first]) * shape.alongFirst;
    std::array<SbVec3d, 2> normals;
    for (std::size_t i = 0; i < 2; ++i) {
        auto const at = [&](std::size_t corner) {
            int const number = shape.triangles[i][corner];
            return number == FltBowTie::crossing ? middle : corners[static_cast<std::size_t>(number)];
        };
        normals[i] = (at(1) - at(0)).cross(at(2) - at(0));
    }
    return normals;
}

Corners const even = {SbVec3d(0, 0, 7), {2, 2, 7}, {2, 0, 7}, {0, 2, 7}};
Corners const uneven = {SbVec3d(0, 0, 7), {3, 3, 7}, {3, -3, 7}, {0, 0.5, 7}};

} // namespace

TEST(FltBowTie, findsWhereTheOutlineCrossesItselfWhereverItBegins)
{
    for (std::size_t by = 0; by < 4; ++by) {
        Corners const corners = turned(even, by);
        auto const shape = FltBowTie::find(corners);
        ASSERT_TRUE(shape.has_value()) << by;
        EXPECT_DOUBLE_EQ(shape->alongFirst, 0.5);
        EXPECT_DOUBLE_EQ(shape->alongOther, 0.5);
        for (SbVec3d const& normal : normalsOf(*shape, corners))
            EXPECT_DOUBLE_EQ(normal.length(), 2) << by;
    }
}

TEST(FltBowTie, turnsBothTrianglesToTheSideOfTheLargerOne)
{
    for (std::size_t by = 0; by < 4; ++by) {
        Corners const corners = turned(uneven, by);
        auto const shape = FltBowTie::find(corners);
        ASSERT_TRUE(shape.has_value()) << by;
        for (SbVec3d const& normal : normalsOf(*shape, corners))
            EXPECT_LT(normal[2], 0) << by; // the larger one goes clockwise
    }
}

TEST(FltBowTie, turnsEqualTrianglesToTheSideOfTheFirstCorner)
{
    for (auto const& [by, side] : {std::pair{0, 1}, {1, -1}, {2, -1}, {3, 1}}) {
        Corners const corners = turned(even, static_cast<std::size_t>(by));
        auto const shape = FltBowTie::find(corners);
        ASSERT_TRUE(shape.has_value());
        for (SbVec3d const& normal : normalsOf(*shape, corners))
            EXPECT_GT(normal[2] * side, 0) << by;
    }
}

TEST(FltBowTie, isNoSquareNoArrowAndNothingThatOnlyTouchesItself)
{
    EXPECT_FALSE(FltBowTie::find({SbVec3d(0, 0, 0), {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}));
    EXPECT_FALSE(FltBowTie::find({SbVec3d(0, 0, 0), {2, 0, 0}, {0.5, 0.5, 0}, {0, 2, 0}}));
    EXPECT_FALSE(FltBowTie::find({SbVec3d(0, 0, 0), {2, 0, 0}, {1, 0, 0}, {1, 2, 0}}));
    EXPECT_FALSE(FltBowTie::find({SbVec3d(0, 0, 0), {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}));
    EXPECT_FALSE(FltBowTie::find({SbVec3d(5, 5, 5), {5, 5, 5}, {5, 5, 5}, {5, 5, 5}}));
}

TEST(FltBowTie, passesEdgesThatOnlySeemToCross)
{
    EXPECT_FALSE(FltBowTie::find({SbVec3d(0, 0, 0), {2, 2, 0}, {2, 0, 1}, {0, 2, 1}}));
}

TEST(FltBowTie, hasEdgesWhoseAngleIsLargerThanAMillionth)
{
    auto const risingBy = [](double height) {
        double const half = 34999999.9999825; // of an edge as long as 1e6 times 70
        return FltBowTie::find(
            {SbVec3d(-33554432, 0, 0), {33554432, 0, 0}, {-half, -height / 2, 0}, {half, height / 2, 0}});
    };
    EXPECT_FALSE(risingBy(70));
    EXPECT_TRUE(risingBy(70.1));
}

TEST(FltBowTie, isNothingThatIsNoNumber)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(FltBowTie::find({SbVec3d(nan, 0, 0), {2, 2, 0}, {2, 0, 0}, {0, 2, 0}}));
    EXPECT_FALSE(FltBowTie::find({SbVec3d(1e300, 0, 0), {-1e300, 2, 0}, {2, 1e300, 0}, {0, -1e300, 0}}));
}
