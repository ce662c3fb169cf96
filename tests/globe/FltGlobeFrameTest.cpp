#include "globe/FltGlobeFrame.h"

#include "OnEarth.h"

#include <gtest/gtest.h>

TEST(FltGlobeFrame, goesEastNorthAndUp)
{
    FltGlobeFrame const frame({50, 10, 100});
    auto const onEarth = [&](SbVec3d const& place) {
        SbVec3d result;
        frame.matrix().multVecMatrix(place, result);
        return result;
    };
    EXPECT_LT(OnEarth::distance(onEarth({0, 0, 0}), OnEarth::geocentric(50, 10, 100)), 1e-6);
    EXPECT_LT(OnEarth::distance(onEarth({0, 0, 50}), OnEarth::geocentric(50, 10, 150)), 1e-6);
    // A short way on the ground.
    SbVec3d const north = OnEarth::geocentric(50.00001, 10, 100);
    EXPECT_GT(frame.fromEarth(north)[1], 1.1);
    EXPECT_NEAR(frame.fromEarth(north)[0], 0, 1e-6);
    SbVec3d const east = OnEarth::geocentric(50, 10.00001, 100);
    EXPECT_GT(frame.fromEarth(east)[0], 0.7);
    EXPECT_NEAR(frame.fromEarth(east)[1], 0, 1e-6);
}

TEST(FltGlobeFrame, bringsPlacesThereAndBack)
{
    FltGlobeFrame const frame({-33.3, 151, 20});
    SbVec3d const place(1234.5, -67.8, 9);
    SbVec3d onEarth;
    frame.matrix().multVecMatrix(place, onEarth);
    EXPECT_LT(OnEarth::distance(frame.fromEarth(onEarth), place), 1e-8);
    EXPECT_EQ(frame.place().latitude, -33.3);
}
