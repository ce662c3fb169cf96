#include "visual/FltPlaneSet.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>

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

TEST(FltPlaneSet, findsAPlaneAcrossTheEndsOfSeveralCells)
{
    /// @param off   how far from the ends of four cells, in parts of a cell
    /// @param which of the values are beyond the ends
    auto const planeAt = [](double off, unsigned which) {
        auto const at = [&](int i, double cell, double end) {
            return (end + ((which >> i & 1U) != 0 ? off : -off)) * cell;
        };
        return FltPlaneSet::Plane{SbVec3d(at(0, 1e-4, 6000.5), at(1, 1e-4, 3000.5), at(2, 1e-4, 2000.5)),
                                  at(3, 2e-3, 1.5)};
    };
    for (unsigned beyond = 0; beyond < 16; ++beyond) {
        FltPlaneSet set(1000);
        std::int32_t const first = set.numberOf(planeAt(1e-5, 0));
        EXPECT_EQ(set.numberOf(planeAt(1e-5, beyond)), first) << beyond;
        EXPECT_EQ(set.numberOf(planeAt(0.24, beyond)), first) << beyond;
        EXPECT_EQ(set.numberOf(planeAt(0.26, beyond)) == first, beyond == 0) << beyond;
    }
}

TEST(FltPlaneSet, asksTheCellOfAPlaneBeforeThoseBesideIt)
{
    FltPlaneSet set(1000);
    std::int32_t const left = set.numberOf({SbVec3d(0, 0, 1), 2e-3});
    std::int32_t const right = set.numberOf({SbVec3d(0, 0, 1), 4e-3});
    EXPECT_NE(left, right);
    EXPECT_EQ(set.numberOf({SbVec3d(0, 0, 1), 3e-3 - 1e-9}), left);
    EXPECT_EQ(set.numberOf({SbVec3d(0, 0, 1), 3e-3 + 1e-9}), right);
}

TEST(FltPlaneSet, looksBesideACellInTheLastQuarterBeforeItsEndAlone)
{
    FltPlaneSet set(500'000); // distances have cells of 1
    std::int32_t const first = set.numberOf({SbVec3d(0, 0, 1), 1});
    EXPECT_EQ(set.numberOf({SbVec3d(0, 0, 1), 0.26}), first);
    EXPECT_NE(set.numberOf({SbVec3d(0, 0, 1), 0.25}), first);
}

TEST(FltPlaneSet, turnsPlanesByTheFirstOfTheAxesThatAreLongest)
{
    for (SbVec3d const& axis : {SbVec3d(1, 0, 0), SbVec3d(0, 1, 0), SbVec3d(0, 0, 1)}) {
        FltPlaneSet set(1000);
        std::int32_t const first = set.numberOf({axis, 5});
        EXPECT_EQ(set.numberOf({-axis, -5}), first);
        EXPECT_NE(set.numberOf({-axis, 5}), first);
    }
    double const x = 0.6, cell = 1e-4;
    for (auto const& [y, otherY] :
         {std::pair(x + cell - 1e-9, x + cell), {x - cell - 1e-9, x - cell + 1e-9}}) {
        FltPlaneSet set(1000);
        std::int32_t const first = set.numberOf({SbVec3d(x, -y, 0.5), 5});
        EXPECT_EQ(set.numberOf({SbVec3d(x, -otherY, 0.5), 5}), first) << "y isn't longer by more than a cell";
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
    EXPECT_TRUE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}));
    EXPECT_TRUE(FltPlaneSet::planeOf({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}));
}
