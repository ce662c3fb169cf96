#include "visual/FltPlaneSet.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Points = std::vector<SbVec3d>;

/// A square about a point, in a plane that leans, turned about its normal and moved along it.
Points square(SbVec3d const& centre, double along, bool isTurned = false)
{
    SbVec3d const right(2.0 / 3, 1.0 / 3, 2.0 / 3), up(-2.0 / 3, 2.0 / 3, 1.0 / 3),
        out(-1.0 / 3, -2.0 / 3, 2.0 / 3);
    SbVec3d const middle = centre + out * along;
    Points points = {middle - right - up, middle + right - up, middle + right + up, middle - right + up};
    if (isTurned)
        points = {points[3], points[2], points[1], points[0]};
    return points;
}

std::int32_t numberOf(FltPlaneSet& set, Points const& points)
{
    auto const plane = FltPlaneSet::planeOf(points);
    return plane ? set.numberOf(*plane) : FltPlaneSet::none;
}

} // namespace

TEST(FltPlaneSet, givesOnePlaneOneNumberWhereverItsFacesStandAndLook)
{
    FltPlaneSet set(1000);
    SbVec3d const right(2.0 / 3, 1.0 / 3, 2.0 / 3), origin(0, 0, 0);
    std::int32_t const first = numberOf(set, square(origin, 5));
    EXPECT_EQ(numberOf(set, square(right * 900, 5)), first);
    EXPECT_EQ(numberOf(set, square(origin, 5, true)), first);
    EXPECT_EQ(numberOf(set, square(origin, 5.0001)), first) << "nearer than a millionth of the scale";
}

TEST(FltPlaneSet, tellsOtherPlanesApart)
{
    FltPlaneSet set(1000);
    SbVec3d const origin(0, 0, 0);
    std::int32_t const first = numberOf(set, square(origin, 5));
    EXPECT_NE(numberOf(set, square(origin, 5.01)), first);
    EXPECT_NE(numberOf(set, square(origin, -5)), first);
    EXPECT_NE(numberOf(set, {{0, 0, 5}, {1, 0, 5}, {1, 1, 5}}), first);
}

/// Where rounding would put values of one plane into two cells, whichever of them comes first.
TEST(FltPlaneSet, findsAPlaneAcrossTheEndOfACell)
{
    for (double const distance : {1e-3, 3e-3, 5e-3, 7e-3})
        for (double const step : {1e-9, -1e-9}) {
            FltPlaneSet set(1000);
            std::int32_t const first = set.numberOf({SbVec3d(0, 0, 1), distance});
            EXPECT_EQ(set.numberOf({SbVec3d(0, 0, 1), distance + step}), first) << distance;
        }
}

TEST(FltPlaneSet, findsNoPlaneOfALineABentFaceOrWhatIsNoNumber)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinite = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}}));
    EXPECT_FALSE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
    EXPECT_FALSE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0.1}, {0, 1, 0}}));
    EXPECT_FALSE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {1, nan, 0}}));
    EXPECT_FALSE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {1, infinite, 0}}));
    EXPECT_TRUE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}));
}
