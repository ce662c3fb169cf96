#include "loader/FltProjection.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

/// In degrees: less than a tenth of a millimetre on the ground.
constexpr double exactly = 1e-9;

FltDatabaseInfo infoOf(int projection, int ellipsoid = 0)
{
    FltDatabaseInfo info;
    info.projection = projection;
    info.ellipsoid = ellipsoid;
    return info;
}

FltDatabaseInfo utm(int zone, int ellipsoid = 0)
{
    FltDatabaseInfo info = infoOf(4, ellipsoid);
    info.utmZone = zone;
    return info;
}

void expectPlace(FltDatabaseInfo const& info, std::array<double, 3> const& stored, double latitude,
                 double longitude, double height, double tolerance = exactly, double heightTolerance = 1e-6)
{
    auto const place = FltProjection(info).placeOf(stored);
    ASSERT_TRUE(place) << FltProjection(info).describe();
    EXPECT_NEAR(latitude, place->latitude, tolerance);
    EXPECT_NEAR(longitude, place->longitude, tolerance);
    EXPECT_NEAR(height, place->height, heightTolerance);
}

// The places of UTM and geocentric coordinates are those of cs2cs of PROJ 9.1.

TEST(FltProjectionTest, KnowsThePlacesOfUtm)
{
    expectPlace(utm(32), {500000, 5000000, 7}, 45.1534771834, 9, 7);
    expectPlace(utm(33), {412345.678, 5765432.1, 0}, 52.0325767060, 13.7222276219, 0);
    expectPlace(utm(-19), {830000, 7500000, -3}, -22.5747856386, -65.7910660242, -3);
    expectPlace(utm(31), {166021.4431, 0, 0}, 0, 0.0000000002, 0);
    expectPlace(utm(10, 3), {552000.25, 4182000.5, 0}, 37.7857273708, -122.4094554946, 0);
    expectPlace(utm(10, 4), {552000.25, 4182000.5, 0}, 37.7857273708, -122.4094554946, 0);
    expectPlace(utm(32, 2), {691234.5, 5334567.8, 0}, 48.1404884000, 11.5710127442, 0);
    expectPlace(utm(45, 1), {250000, 9300000, 0}, 83.3610929877, 67.2524326588, 0);
}

TEST(FltProjectionTest, KnowsTheZoneOfUtmByTheOriginWhereTheHeaderHasNone)
{
    FltDatabaseInfo info = utm(0);
    EXPECT_FALSE(FltProjection(info).isKnown());
    EXPECT_EQ("unknown place: UTM without a zone", FltProjection(info).describe());
    info.originLatitude = -22;
    info.originLongitude = -66.1;
    EXPECT_EQ("UTM, zone 19 south, on WGS 1984", FltProjection(info).describe());
    info.originLongitude = 179.9;
    EXPECT_EQ("UTM, zone 60 south, on WGS 1984", FltProjection(info).describe());
    info.originLongitude = 180;
    EXPECT_EQ("UTM, zone 1 south, on WGS 1984", FltProjection(info).describe());
    EXPECT_FALSE(FltProjection(utm(61)).isKnown());
    EXPECT_FALSE(FltProjection(utm(-61)).isKnown());
}

TEST(FltProjectionTest, AddsTheHeadersDeltasInUtm)
{
    FltDatabaseInfo info = utm(33);
    info.delta[0] = 400000;
    info.delta[1] = 5765000;
    expectPlace(info, {12345.678, 432.1, 0}, 52.0325767060, 13.7222276219, 0);
}

TEST(FltProjectionTest, KnowsGeocentricPlaces)
{
    FltDatabaseInfo const info = infoOf(6);
    expectPlace(info, {4075580.685, 931853.684, 4801568.128}, 49.1441977097, 12.8789078452, 666.0895684725);
    expectPlace(info, {-2694045.1, -4293642.2, 3857878.3}, 37.4602380565, -122.1062089635, -302.1364169428);
    expectPlace(info, {6378237, 0, 0}, 0, 0, 100);
    expectPlace(info, {0, 0, 6356852.3142451793}, 90, 0, 100);
    expectPlace(infoOf(6, 2), {-1234567.8, 5432109.8, -3210987.6}, -30.1245058773, 102.8042398973,
                57746.0805358598, exactly, 2e-5);
    EXPECT_FALSE(FltProjection(info).placeOf({0, 0, 0})) << "the middle of the earth";
}

TEST(FltProjectionTest, KnowsThePlacesOfAFlatEarthByItsOrigin)
{
    FltDatabaseInfo info = infoOf(0);
    info.originLatitude = 48.5;
    info.originLongitude = 9.25;
    // A kilometre along the ground, by geod of PROJ 9.1. Along the parallel that differs by the bend of a
    // line.
    expectPlace(info, {0, 1000, 2}, 48.5089927955, 9.25, 2, 1e-6);
    expectPlace(info, {1000, 0, 0}, 48.5, 9.2635315413, 0, 1e-6);
    info.unit = FltDatabaseInfo::Unit::feet;
    expectPlace(info, {0, 1000 / 0.3048, 2 / 0.3048}, 48.5089927955, 9.25, 2, 1e-6);
}

TEST(FltProjectionTest, TakesAFlatEarthWithoutAnOriginForNoPlace)
{
    FltProjection const projection(infoOf(0));
    EXPECT_FALSE(projection.isKnown());
    EXPECT_EQ("unknown place: the header has no origin", projection.describe());
    EXPECT_FALSE(projection.placeOf({1, 2, 3}));
}

TEST(FltProjectionTest, TakesGeodeticCoordinatesAsDegrees)
{
    FltDatabaseInfo info = infoOf(5);
    info.unit = FltDatabaseInfo::Unit::feet;
    expectPlace(info, {9.25, 48.5, 100}, 48.5, 9.25, 30.48);
    expectPlace(info, {190, -48.5, 0}, -48.5, -170, 0);
    EXPECT_FALSE(FltProjection(info).placeOf({9, 91, 0}));
}

TEST(FltProjectionTest, SaysWhatItDoesNotKnowAndGuessesNothing)
{
    for (int const number : {1, 2, 3, 7, -5}) {
        FltProjection const projection(infoOf(number));
        EXPECT_FALSE(projection.isKnown());
        EXPECT_EQ("unknown projection, number " + std::to_string(number), projection.describe());
        EXPECT_FALSE(projection.placeOf({1, 2, 3}));
    }
    EXPECT_EQ("unknown ellipsoid, number 5", FltProjection(infoOf(5, 5)).describe());
    EXPECT_FALSE(FltProjection(infoOf(5, 5)).isKnown());
}

TEST(FltProjectionTest, TakesAnEllipsoidOfTheHeadersOwnAxes)
{
    FltDatabaseInfo info = utm(32, -1);
    EXPECT_FALSE(FltProjection(info).isKnown()) << "there are no axes";
    info.earthMajorAxis = 6378137;
    info.earthMinorAxis = 6356752.314245179;
    EXPECT_EQ("UTM, zone 32 north, on an ellipsoid of its own", FltProjection(info).describe());
    expectPlace(info, {500000, 5000000, 0}, 45.1534771834, 9, 0);
    info.earthMinorAxis = 1;
    EXPECT_FALSE(FltProjection(info).isKnown());
    info.earthMinorAxis = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(FltProjection(info).isKnown());
}

/// By Krüger's series as it was published, worked out by another program, and by its inverse.
TEST(FltProjectionTest, KnowsThePlacesOfUtmOnEllipsoidsAsFlatAsTheyMayBe)
{
    auto const flat = [](int zone, double minorAxis) {
        FltDatabaseInfo info = utm(zone, -1);
        info.earthMajorAxis = 6378137;
        info.earthMinorAxis = minorAxis;
        return info;
    };
    constexpr double nearly = 1e-10;
    expectPlace(flat(32, 3252849.87), {-1400000, 4500000, 0}, 70.13895298381838, -21.760647295105883, 0,
                nearly);
    expectPlace(flat(32, 3252849.87), {900000, 3000000, 0}, 61.76516681067305, 13.956983746748989, 0, nearly);
    expectPlace(flat(-32, 3252849.87), {900000, 7000000, 0}, -61.76516681067305, 13.956983746748989, 0,
                nearly);
    expectPlace(flat(32, 4783602.75), {1800000, 5000000, 0}, 60.479525670821175, 28.577824148047, 0, nearly);
}

TEST(FltProjectionTest, KnowsGeocentricPlacesFarFromTheGroundOfAFlatEllipsoid)
{
    FltDatabaseInfo info = infoOf(6, -1);
    info.earthMajorAxis = 6378137;
    info.earthMinorAxis = 6378137 * 0.52;
    double const square = 1 - 0.52 * 0.52, degree = std::acos(-1.0) / 180;
    for (auto const& [latitude, height] : {std::pair(70.0, -2e6), {40.0, 2e7}, {-40.0, -1e6}, {60.0, 0.0}}) {
        double const sine = std::sin(latitude * degree);
        double const across = 6378137 / std::sqrt(1 - square * sine * sine);
        double const fromAxis = (across + height) * std::cos(latitude * degree);
        expectPlace(info,
                    {fromAxis * std::cos(30 * degree), fromAxis * std::sin(30 * degree),
                     (across * (1 - square) + height) * sine},
                    latitude, 30, height, exactly, 1e-3);
    }
}

TEST(FltProjectionTest, TakesAllCoordinatesInTheUnitOfTheFile)
{
    constexpr double foot = 0.3048;
    FltDatabaseInfo info = infoOf(6);
    info.unit = FltDatabaseInfo::Unit::feet;
    expectPlace(info, {4075580.685 / foot, 931853.684 / foot, 4801568.128 / foot}, 49.1441977097,
                12.8789078452, 666.0895684725);
    info = utm(33);
    info.unit = FltDatabaseInfo::Unit::feet;
    info.delta[0] = 400000 / foot;
    info.delta[1] = 5765000 / foot;
    expectPlace(info, {12345.678 / foot, 432.1 / foot, 30 / foot}, 52.0325767060, 13.7222276219, 30);
    EXPECT_EQ(FltProjection(info).metresInUnit(), foot);
}

TEST(FltProjectionTest, TakesTheEquatorForNorthWhereTheHeaderHasNoZone)
{
    FltDatabaseInfo info = utm(0);
    info.originLongitude = 9;
    EXPECT_EQ("UTM, zone 32 north, on WGS 1984", FltProjection(info).describe());
    info = utm(0);
    info.originLatitude = 48;
    EXPECT_EQ("UTM, zone 31 north, on WGS 1984", FltProjection(info).describe());
    info.originLatitude = 90;
    info.originLongitude = 360;
    EXPECT_EQ("UTM, zone 31 north, on WGS 1984", FltProjection(info).describe());
    info.originLatitude = 90.5;
    EXPECT_FALSE(FltProjection(info).isKnown());
    info.originLatitude = 48;
    info.originLongitude = 360.5;
    EXPECT_FALSE(FltProjection(info).isKnown());
    EXPECT_TRUE(FltProjection(utm(60)).isKnown());
    EXPECT_TRUE(FltProjection(utm(-60)).isKnown());
    EXPECT_EQ("UTM, zone 1 south, on WGS 1984", FltProjection(utm(-1)).describe());
}

TEST(FltProjectionTest, TakesOriginsOfAFlatEarthBetweenThePoles)
{
    auto const isKnown = [](double latitude, double longitude) {
        FltDatabaseInfo info = infoOf(0);
        info.originLatitude = latitude;
        info.originLongitude = longitude;
        return FltProjection(info).isKnown();
    };
    EXPECT_TRUE(isKnown(0, 9));
    EXPECT_TRUE(isKnown(48, 0));
    EXPECT_TRUE(isKnown(-89.9, -360));
    EXPECT_FALSE(isKnown(90, 9));
    EXPECT_FALSE(isKnown(-90, 9));
    EXPECT_FALSE(isKnown(48, 361));
    EXPECT_FALSE(isKnown(std::numeric_limits<double>::quiet_NaN(), 9));
}

TEST(FltProjectionTest, TakesAxesOfAnEllipsoidThatLooksLikeAPlanet)
{
    auto const isKnown = [](double major, double minor) {
        FltDatabaseInfo info = infoOf(5, -1);
        info.earthMajorAxis = major;
        info.earthMinorAxis = minor;
        return FltProjection(info).isKnown();
    };
    EXPECT_TRUE(isKnown(6371000, 6371000)) << "a ball";
    EXPECT_FALSE(isKnown(6371000, 6371001)) << "higher than wide";
    EXPECT_FALSE(isKnown(6371000, 3185500)) << "half as high as wide";
    EXPECT_TRUE(isKnown(6371000, 3185501));
    EXPECT_FALSE(isKnown(1000000, 990000));
    EXPECT_TRUE(isKnown(1000001, 990000));
    double const infinite = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(isKnown(infinite, infinite));
}

TEST(FltProjectionTest, TakesPlacesUpToTheirBoundsAndNoneBeyond)
{
    FltProjection const plane(utm(32)), degrees(infoOf(5)), middle(infoOf(6));
    EXPECT_TRUE(plane.placeOf({2500000, 0, 0}));
    EXPECT_FALSE(plane.placeOf({2500001, 0, 0}));
    EXPECT_TRUE(plane.placeOf({-1500000, 0, 0}));
    EXPECT_FALSE(plane.placeOf({-1500001, 0, 0}));
    EXPECT_TRUE(plane.placeOf({500000, -20000000, 0}));
    EXPECT_TRUE(plane.placeOf({500000, 20000000, 0}));
    EXPECT_FALSE(plane.placeOf({500000, 20000001, 0}));
    EXPECT_TRUE(degrees.placeOf({360, 90, 0}));
    EXPECT_TRUE(degrees.placeOf({-360, -90, 0}));
    EXPECT_FALSE(degrees.placeOf({360.1, 0, 0}));
    EXPECT_FALSE(degrees.placeOf({0, -90.1, 0}));
    EXPECT_TRUE(middle.placeOf({1000000, 0, 0}));
    EXPECT_FALSE(middle.placeOf({999999, 0, 0}));
}

TEST(FltProjectionTest, GivesNoPlaceForWhatIsNoneInItsZone)
{
    FltProjection const projection(utm(32));
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(projection.placeOf({1e7, 5e6, 0}));
    EXPECT_FALSE(projection.placeOf({5e5, 1e9, 0}));
    EXPECT_FALSE(projection.placeOf({nan, 5e6, 0}));
    EXPECT_FALSE(projection.placeOf({5e5, 5e6, nan}));
}

} // namespace
