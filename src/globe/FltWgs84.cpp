#include "globe/FltWgs84.h"

#include <cmath>

namespace
{

constexpr double radiansInDegree = 3.14159265358979323846 / 180;
constexpr double majorAxis = 6378137;
constexpr double flattening = 1 / 298.257223563;
constexpr double eccentricitySquare = flattening * (2 - flattening);

} // namespace

SbVec3d FltWgs84::geocentric(FltProjection::Place const& place)
{
    double const latitude = place.latitude * radiansInDegree, longitude = place.longitude * radiansInDegree;
    double const sine = std::sin(latitude);
    double const across = majorAxis / std::sqrt(1 - eccentricitySquare * sine * sine);
    double const fromAxis = (across + place.height) * std::cos(latitude);
    return {fromAxis * std::cos(longitude), fromAxis * std::sin(longitude),
            (across * (1 - eccentricitySquare) + place.height) * sine};
}

SbVec3d FltWgs84::up(FltProjection::Place const& place)
{
    double const latitude = place.latitude * radiansInDegree, longitude = place.longitude * radiansInDegree;
    return {std::cos(latitude) * std::cos(longitude), std::cos(latitude) * std::sin(longitude),
            std::sin(latitude)};
}

SbVec3d FltWgs84::east(FltProjection::Place const& place)
{
    double const longitude = place.longitude * radiansInDegree;
    return {-std::sin(longitude), std::cos(longitude), 0};
}
