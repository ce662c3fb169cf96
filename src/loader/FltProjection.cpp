#include "loader/FltProjection.h"

#include "records/FltUnits.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr double pi = 3.14159265358979323846;
constexpr double degreesInRadian = 180 / pi;
constexpr int lastZone = 60;
constexpr double degreesOfZone = 6;
constexpr double scaleOfUtm = 0.9996;
constexpr double falseEasting = 500000;
constexpr double falseNorthing = 10000000;
constexpr double widestEasting = 2000000; ///< From the middle of a zone; what is farther off isn't meant.
constexpr double leastRadius = 1000000;   ///< Of a geocentric place; nearer to the middle there is no up.
constexpr int userDefined = -1;           ///< The ellipsoid of the header's own axes.

struct Ellipsoid {
    int number;
    char const* name;
    double majorAxis;
    double inverseFlattening;
};

constexpr Ellipsoid ellipsoids[] = {
    {0, "WGS 1984", 6378137, 298.257223563},      {1, "WGS 1972", 6378135, 298.26},
    {2, "Bessel", 6377397.155, 299.1528128},      {3, "Clarke 1866", 6378206.4, 294.978698213898},
    {4, "NAD 1927", 6378206.4, 294.978698213898},
};

bool isPlaceInDegrees(double latitude, double longitude)
{
    return std::abs(latitude) <= 90 && std::abs(longitude) <= 360;
}

/// From -180 to 180.
double wrapped(double longitude)
{
    return std::remainder(longitude, 360);
}

/// The square of the eccentricity.
double eccentricitySquare(double flattening)
{
    return flattening * (2 - flattening);
}

/// The coefficients of Krüger's series from the plane to the sphere, to the sixth power of the third
/// flattening.
std::array<double, 6> coefficients(double n)
{
    double const n2 = n * n, n3 = n2 * n, n4 = n3 * n, n5 = n4 * n, n6 = n5 * n;
    return {n / 2 - 2 * n2 / 3 + 37 * n3 / 96 - n4 / 360 - 81 * n5 / 512 + 96199 * n6 / 604800,
            n2 / 48 + n3 / 15 - 437 * n4 / 1440 + 46 * n5 / 105 - 1118711 * n6 / 3870720,
            17 * n3 / 480 - 37 * n4 / 840 - 209 * n5 / 4480 + 5569 * n6 / 90720,
            4397 * n4 / 161280 - 11 * n5 / 504 - 830251 * n6 / 7257600,
            4583 * n5 / 161280 - 108847 * n6 / 3991680,
            20648693 * n6 / 638668800};
}

/// The tangent of the latitude on an ellipsoid from that of the conformal latitude, by Newton's way.
double tangentOfLatitude(double conformal, double flattening)
{
    constexpr int steps = 6; // three are enough for the earth
    double const square = eccentricitySquare(flattening);
    double const eccentricity = std::sqrt(square);
    double tangent = conformal;
    for (int i = 0; i < steps; ++i) {
        double const secant = std::sqrt(1 + tangent * tangent);
        double const sigma = std::sinh(eccentricity * std::atanh(eccentricity * tangent / secant));
        double const reached = tangent * std::sqrt(1 + sigma * sigma) - sigma * secant;
        tangent += (conformal - reached) / std::sqrt(1 + reached * reached) *
                   (1 + (1 - square) * tangent * tangent) / ((1 - square) * secant);
    }
    return tangent;
}

} // namespace

FltProjection::FltProjection(FltDatabaseInfo const& info)
    : unit(FltUnits::metresIn(static_cast<std::size_t>(info.unit))), delta{info.delta[0], info.delta[1]}
{
    takeProjection(info);
    if (kind != Kind::unknown)
        takeEllipsoid(info);
}

void FltProjection::takeProjection(FltDatabaseInfo const& info)
{
    enum Number { flatEarth = 0, utm = 4, geodetic = 5, geocentric = 6 };
    switch (info.projection) {
    case flatEarth:
        if ((info.originLatitude == 0 && info.originLongitude == 0) ||
            !(std::abs(info.originLatitude) < 90) || !(std::abs(info.originLongitude) <= 360)) {
            words = "unknown place: the header has no origin";
            return;
        }
        kind = Kind::flatEarth;
        origin = {info.originLatitude, info.originLongitude, 0};
        words = "flat earth";
        return;
    case utm:
        takeZone(info);
        return;
    case geodetic:
        kind = Kind::geodetic;
        words = "geodetic";
        return;
    case geocentric:
        kind = Kind::geocentric;
        words = "geocentric";
        return;
    default:
        words = "unknown projection, number " + std::to_string(info.projection);
    }
}

void FltProjection::takeZone(FltDatabaseInfo const& info)
{
    zone = info.utmZone;
    bool const hasOrigin = (info.originLatitude != 0 || info.originLongitude != 0) &&
                           isPlaceInDegrees(info.originLatitude, info.originLongitude);
    if (zone == 0 && hasOrigin) {
        zone = 1 +
               static_cast<int>(std::floor((wrapped(info.originLongitude) + 180) / degreesOfZone)) % lastZone;
        zone = info.originLatitude < 0 ? -zone : zone;
    }
    if (zone == 0 || zone < -lastZone || zone > lastZone) {
        words = "unknown place: UTM without a zone";
        return;
    }
    kind = Kind::utm;
    words = "UTM, zone " + std::to_string(std::abs(zone)) + (zone < 0 ? " south" : " north");
}

void FltProjection::takeEllipsoid(FltDatabaseInfo const& info)
{
    auto const* const known =
        std::find_if(std::begin(ellipsoids), std::end(ellipsoids),
                     [&](Ellipsoid const& each) { return each.number == info.ellipsoid; });
    double const major = info.earthMajorAxis, minor = info.earthMinorAxis;
    if (known != std::end(ellipsoids)) {
        majorAxis = known->majorAxis;
        flattening = 1 / known->inverseFlattening;
        words += std::string(", on ") + known->name;
    } else if (info.ellipsoid == userDefined && minor > major / 2 && minor <= major && std::isfinite(major) &&
               major > leastRadius) {
        majorAxis = major;
        flattening = (major - minor) / major;
        words += ", on an ellipsoid of its own";
    } else {
        kind = Kind::unknown;
        words = "unknown ellipsoid, number " + std::to_string(info.ellipsoid);
    }
}

bool FltProjection::isKnown() const
{
    return kind != Kind::unknown;
}

std::string const& FltProjection::describe() const
{
    return words;
}

double FltProjection::metresInUnit() const
{
    return unit;
}

std::optional<FltProjection::Place> FltProjection::placeOf(std::array<double, 3> const& stored) const
{
    if (!std::all_of(stored.begin(), stored.end(), [](double value) { return std::isfinite(value); }))
        return std::nullopt;
    auto const& [x, y, z] = stored;
    std::optional<Place> place;
    switch (kind) {
    case Kind::flatEarth:
        place = fromFlatEarth(x * unit, y * unit, z * unit);
        break;
    case Kind::utm:
        place = fromUtm((x + delta[0]) * unit, (y + delta[1]) * unit, z * unit);
        break;
    case Kind::geodetic:
        place = Place{y, x, z * unit};
        break;
    case Kind::geocentric:
        place = fromGeocentric(x * unit, y * unit, z * unit);
        break;
    case Kind::unknown:
        return std::nullopt;
    }
    if (!place || !isPlaceInDegrees(place->latitude, place->longitude))
        return std::nullopt;
    place->longitude = wrapped(place->longitude);
    return place;
}

FltProjection::Place FltProjection::fromFlatEarth(double east, double north, double height) const
{
    double const sine = std::sin(origin.latitude / degreesInRadian);
    double const square = eccentricitySquare(flattening);
    double const curvature = 1 - square * sine * sine;
    double const across = majorAxis / std::sqrt(curvature);
    double const along = across * (1 - square) / curvature;
    return {origin.latitude + north / along * degreesInRadian,
            origin.longitude +
                east / (across * std::cos(origin.latitude / degreesInRadian)) * degreesInRadian,
            height};
}

std::optional<FltProjection::Place> FltProjection::fromUtm(double easting, double northing,
                                                           double height) const
{
    if (!(std::abs(easting - falseEasting) <= widestEasting) || !(std::abs(northing) <= 2 * falseNorthing))
        return std::nullopt;
    double const third = flattening / (2 - flattening);
    double const square = third * third;
    double const radius =
        majorAxis / (1 + third) * (1 + square / 4 + square * square / 64 + square * square * square / 256);
    double const xi = (northing - (zone < 0 ? falseNorthing : 0)) / (scaleOfUtm * radius);
    double const eta = (easting - falseEasting) / (scaleOfUtm * radius);
    double sphereXi = xi, sphereEta = eta;
    double turn = 0;
    for (double const coefficient : coefficients(third)) {
        turn += 2;
        sphereXi -= coefficient * std::sin(turn * xi) * std::cosh(turn * eta);
        sphereEta -= coefficient * std::cos(turn * xi) * std::sinh(turn * eta);
    }
    double const conformal = std::sin(sphereXi) / std::hypot(std::sinh(sphereEta), std::cos(sphereXi));
    double const longitude = std::atan2(std::sinh(sphereEta), std::cos(sphereXi));
    double const middle = std::abs(zone) * degreesOfZone - 183;
    return Place{std::atan(tangentOfLatitude(conformal, flattening)) * degreesInRadian,
                 middle + longitude * degreesInRadian, height};
}

/// By Bowring's way, which is repeated for places that are far from the ground.
std::optional<FltProjection::Place> FltProjection::fromGeocentric(double x, double y, double z) const
{
    constexpr int steps = 5;
    double const fromAxis = std::hypot(x, y);
    if (!(std::hypot(fromAxis, z) >= leastRadius))
        return std::nullopt;
    double const square = eccentricitySquare(flattening);
    double const minorAxis = majorAxis * (1 - flattening);
    double reduced = std::atan2(z * majorAxis, fromAxis * minorAxis);
    double latitude = 0;
    for (int i = 0; i < steps; ++i) {
        double const sine = std::sin(reduced), cosine = std::cos(reduced);
        latitude = std::atan2(z + square / (1 - square) * minorAxis * sine * sine * sine,
                              fromAxis - square * majorAxis * cosine * cosine * cosine);
        reduced = std::atan2((1 - flattening) * std::sin(latitude), std::cos(latitude));
    }
    double const sine = std::sin(latitude);
    double const height =
        fromAxis * std::cos(latitude) + z * sine - majorAxis * std::sqrt(1 - square * sine * sine);
    return Place{latitude * degreesInRadian, std::atan2(y, x) * degreesInRadian, height};
}
