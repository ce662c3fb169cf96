#pragma once

#include "globe/FltGlobe.h"
#include "loader/FltProjection.h"
#include "visual/FltVisualWalk.h"

#include <Inventor/SbVec3d.h>
#include <cmath>
#include <vector>

/// Places on the earth as a test works them out for itself, by other formulas than the system's.
namespace OnEarth
{

constexpr double pi = 3.14159265358979323846;

/// From the middle of the earth. By the reduced latitude: the foot is on the ellipse of both half axes.
inline SbVec3d geocentric(double latitude, double longitude, double height)
{
    constexpr double a = 6378137, b = 6356752.314245179;
    double const phi = latitude * pi / 180, lambda = longitude * pi / 180;
    double const reduced = std::atan2(b * std::sin(phi), a * std::cos(phi));
    double const fromAxis = a * std::cos(reduced) + height * std::cos(phi);
    return {fromAxis * std::cos(lambda), fromAxis * std::sin(lambda),
            b * std::sin(reduced) + height * std::sin(phi)};
}

/// What stands upright on the ellipsoid above or below a place.
inline SbVec3d upAt(double latitude, double longitude)
{
    SbVec3d up = geocentric(latitude, longitude, 1) - geocentric(latitude, longitude, 0);
    up.normalize();
    return up;
}

/// A corner as it is drawn.
struct Corner {
    SbVec3d place;
    SbVec3d normal{0, 0, 0};
};

/// All corners of a tile, from the middle of the earth.
inline std::vector<Corner> cornersOf(FltGlobeTile const& tile)
{
    std::vector<Corner> corners;
    FltVisualWalk walk(tile.visual.root);
    while (walk.next())
        for (std::size_t i = 0; i < walk.mesh().positions.size(); ++i) {
            SbDPMatrix const matrix = walk.matrix() * tile.frame.matrix();
            Corner corner;
            matrix.multVecMatrix(walk.mesh().origin + SbVec3d(walk.mesh().positions[i]), corner.place);
            if (i < walk.mesh().normals.size())
                matrix.multDirMatrix(SbVec3d(walk.mesh().normals[i]), corner.normal);
            corners.push_back(corner);
        }
    return corners;
}

inline double distance(SbVec3d const& one, SbVec3d const& other)
{
    return (one - other).length();
}

} // namespace OnEarth
