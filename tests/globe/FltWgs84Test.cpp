#include "globe/FltWgs84.h"

#include "OnEarth.h"

#include <gtest/gtest.h>

TEST(FltWgs84, hasThePlacesOfOtherPrograms)
{
    // By cs2cs of PROJ 9.1.
    EXPECT_LT(OnEarth::distance(FltWgs84::geocentric({49.1441977097, 12.8789078452, 666.0895684725}),
                                {4075580.685, 931853.684, 4801568.128}),
              1e-3);
    EXPECT_LT(OnEarth::distance(FltWgs84::geocentric({37.4602380565, -122.1062089635, -302.1364169428}),
                                {-2694045.1, -4293642.2, 3857878.3}),
              1e-3);
}

TEST(FltWgs84, goesUpFromTheEllipsoidAndEastAlongIt)
{
    for (double const latitude : {-90.0, -33.3, 0.0, 45.0, 89.0})
        for (double const longitude : {-180.0, -66.6, 0.0, 120.0}) {
            SbVec3d const up = FltWgs84::up({latitude, longitude, 5});
            SbVec3d const east = FltWgs84::east({latitude, longitude, 5});
            EXPECT_LT(OnEarth::distance(FltWgs84::geocentric({latitude, longitude, 7}),
                                        OnEarth::geocentric(latitude, longitude, 7)),
                      1e-6);
            EXPECT_LT(OnEarth::distance(up, OnEarth::upAt(latitude, longitude)), 1e-8);
            EXPECT_NEAR(up.dot(east), 0, 1e-15);
            EXPECT_NEAR(east.length(), 1, 1e-15);
            SbVec3d const way = OnEarth::geocentric(latitude, longitude + 1e-3, 0) -
                                OnEarth::geocentric(latitude, longitude, 0);
            EXPECT_GE(east.dot(way), -1e-9);
        }
}
