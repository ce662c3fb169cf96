#include "view/PlaceReadout.h"

#include <gtest/gtest.h>

namespace
{

TEST(PlaceReadoutTest, SaysAPlaceOfTheSceneOfTheDatabaseAndOfTheEarth)
{
    FltDatabaseInfo info;
    info.unit = FltDatabaseInfo::Unit::feet;
    info.originLatitude = 48.5;
    info.originLongitude = -9.25;
    EXPECT_EQ(
        "x 0  y 0  z 0 m  |  database 0  0  0 feet  |  48.5000000° N, 9.2500000° W, 0 m (flat earth, on "
        "WGS 1984)",
        PlaceReadout(info, true).textOf(SbVec3f(0, 0, 0)).toStdString());
    info.originLatitude = -info.originLatitude;
    QString const text = PlaceReadout(info, true).textOf(SbVec3f(0, 0, 1));
    EXPECT_TRUE(text.contains("database 0  0  3.280839895 feet  |  48.5000000° S")) << text.toStdString();
}

TEST(PlaceReadoutTest, AddsWhatTheSceneWasMovedBy)
{
    FltDatabaseInfo info;
    info.projection = 4;
    info.utmZone = 33;
    info.offset[0] = 412345;
    info.offset[1] = 5765432;
    QString const text = PlaceReadout(info, true).textOf(SbVec3f(0.5f, 0, 0));
    EXPECT_TRUE(text.contains("database 412345.5  5765432  0 metres")) << text.toStdString();
    EXPECT_TRUE(text.contains("(UTM, zone 33 north, on WGS 1984)")) << text.toStdString();
}

TEST(PlaceReadoutTest, LeavesTheUnitOfTheDatabaseWhereTheSceneHasIt)
{
    FltDatabaseInfo info;
    info.unit = FltDatabaseInfo::Unit::feet;
    PlaceReadout const readout(info, false);
    EXPECT_EQ("feet", readout.unitName());
    EXPECT_TRUE(readout.textOf(SbVec3f(1, 2, 3)).startsWith("x 1  y 2  z 3 feet  |  database 1  2  3 feet"));
}

TEST(PlaceReadoutTest, SaysThatAProjectionIsUnknown)
{
    FltDatabaseInfo info;
    info.projection = 3;
    EXPECT_TRUE(
        PlaceReadout(info, true).textOf(SbVec3f(1, 2, 3)).endsWith("|  (unknown projection, number 3)"));
}

TEST(PlaceReadoutTest, TakesWhatTransformsAddToAZeroForZero)
{
    QString const text = PlaceReadout(FltDatabaseInfo(), true).textOf(SbVec3f(1, -2, 5.68434e-14F));
    EXPECT_TRUE(text.startsWith("x 1  y -2  z 0 m  |  database 1  -2  0 metres")) << text.toStdString();
}

} // namespace
