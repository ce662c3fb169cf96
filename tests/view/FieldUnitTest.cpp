#include "view/FieldUnit.h"

#include <gtest/gtest.h>

namespace
{

std::string unitOf(char const* field)
{
    return FieldUnit::of(field, "feet").toStdString();
}

TEST(FieldUnitTest, KnowsAnglesInDegrees)
{
    for (char const* field : {"maxYaw", "minimumPitch", "rollAngle", "originLatitude", "spotCutoffAngle",
                              "northEastCornerLongitude", "lobeHorizontal"})
        EXPECT_EQ("°", unitOf(field)) << field;
}

TEST(FieldUnitTest, KnowsLengthsInTheUnitOfTheFile)
{
    for (char const* field : {"XOriginOfDOFLocalCoordinateSystem", "Ycoordinate", "switchInDistance",
                              "radius", "ZMaxValue", "position", "southWestDatabaseCoordinateX"})
        EXPECT_EQ(" feet", unitOf(field)) << field;
    EXPECT_EQ("", FieldUnit::of("radius", "").toStdString());
}

TEST(FieldUnitTest, KnowsSecondsAndMetres)
{
    EXPECT_EQ(" s", unitOf("loopDuration"));
    EXPECT_EQ(" m", unitOf("earthMajorAxis"));
}

TEST(FieldUnitTest, GivesNoneToWhatHasNone)
{
    for (char const* field : {"XMaxScale", "ZScaleFactor", "shininess", "IAxisOfRotation", "alpha", "matrix",
                              "XIncrementForScale", "uOfFirstSet"})
        EXPECT_EQ("", unitOf(field)) << field;
}

} // namespace
