#include "visual/FltLocalOrigin.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Places = std::vector<SbVec3d>;

SbVec3d const nowhere(0, 0, 0);

} // namespace

TEST(FltLocalOrigin, isZeroWhereFloatsHoldThePlaces)
{
    EXPECT_EQ(FltLocalOrigin::of(Places{}, 1), nowhere);
    EXPECT_EQ(FltLocalOrigin::of(Places{{0.1, 0.2, 0.3}, {1.7, 2.3, 0.1}}, 1), nowhere);
    EXPECT_EQ(FltLocalOrigin::of(Places{{4500000, 5300000, 1}, {4500001, 5300000, 1}}, 1), nowhere);
}

TEST(FltLocalOrigin, isAPlaceOfFloatsInTheMiddleOfThoseTheyDontHold)
{
    SbVec3d const origin =
        FltLocalOrigin::of(Places{{4500000.1, 5300000.2, 3}, {4500002.1, 5300008.2, 3}}, 1);
    EXPECT_EQ(origin, FltLocalOrigin::roundedToFloats(origin));
    EXPECT_NEAR(origin[0], 4500001.1, 0.5);
    EXPECT_NEAR(origin[1], 5300004.2, 0.5);
    EXPECT_EQ(origin[2], 3);
}

TEST(FltLocalOrigin, toleratesATenthOfAMillimetreWhateverTheUnit)
{
    // At 2048 floats are 1 / 4096 apart.
    double const off = 0.00012;
    for (double const place : {2048 + off, 2048 + 0.00009})
        EXPECT_EQ(FltLocalOrigin::of(Places{{place, 0, 0}, {2049, 0, 0}}, 1) == nowhere, place < 2048 + off);
    EXPECT_EQ(FltLocalOrigin::of(Places{{2048 + off, 0, 0}, {2049, 0, 0}}, 0.3048), nowhere);
    EXPECT_NE(FltLocalOrigin::of(Places{{2048 + 0.00009, 0, 0}, {2049, 0, 0}}, 1000), nowhere);
}

TEST(FltLocalOrigin, toleratesAMillionthOfTheExtent)
{
    Places places = {{4500000.2, 0, 0}, {4299000.2, 0, 0}};
    EXPECT_EQ(FltLocalOrigin::of(places, 1), nowhere) << "200 km";
    places[1] = {4400000.2, 0, 0};
    EXPECT_NE(FltLocalOrigin::of(places, 1), nowhere) << "100 km";
}

TEST(FltLocalOrigin, ofABoxIsItsMiddleIfItIsFarAway)
{
    EXPECT_EQ(FltLocalOrigin::of(SbBox3f(), 1), nowhere);
    EXPECT_EQ(FltLocalOrigin::of(SbBox3f(-10, -10, 0, 500, 500, 90), 1), nowhere);
    EXPECT_EQ(FltLocalOrigin::of(SbBox3f(4e6F, 0, 0, 4.2e6F, 8, 0), 1), SbVec3d(4.1e6, 4, 0));
    EXPECT_EQ(FltLocalOrigin::of(SbBox3f(-1e6F, 0, 0, 4.2e6F, 8, 0), 1), nowhere) << "wider than far";
    EXPECT_EQ(FltLocalOrigin::of(SbBox3f(1500, 0, 0, 1600, 8, 0), 1), nowhere);
    EXPECT_EQ(FltLocalOrigin::of(SbBox3f(1500, 0, 0, 1600, 8, 0), 1000), SbVec3d(1550, 4, 0)) << "kilometres";
}

TEST(FltLocalOrigin, isSharedAsLongAsFloatsHoldTheSmallest)
{
    EXPECT_TRUE(FltLocalOrigin::mayCountTogether(3000, 1, 1)); // off by less than a tenth of a millimetre
    EXPECT_FALSE(FltLocalOrigin::mayCountTogether(4000, 1, 1));
    EXPECT_TRUE(FltLocalOrigin::mayCountTogether(4000, 1, 0.3048));
    EXPECT_TRUE(FltLocalOrigin::mayCountTogether(4000, 4000, 1)); // by a millionth of what is seen
    EXPECT_FALSE(FltLocalOrigin::mayCountTogether(std::numeric_limits<double>::quiet_NaN(), 1, 1));
}
