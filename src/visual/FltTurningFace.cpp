#include "visual/FltTurningFace.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

/// The rows of a rotation that brings a direction to -y, and leaves up as it is as far as that goes.
FltPlacement facingPlacement(SbVec3d normal, bool mayPitch)
{
    FltPlacement placement;
    if (!mayPitch)
        normal[2] = 0;
    SbVec3d up(0, 0, 1);
    if (std::abs(normal[0]) + std::abs(normal[1]) < 1e-6 * std::abs(normal[2]))
        up = SbVec3d(0, 1, 0);
    if (!(normal.normalize() > 0))
        return placement;
    SbVec3d const back = -normal;
    SbVec3d right = back.cross(up);
    right.normalize();
    up = right.cross(back);
    for (int i = 0; i < 3; ++i) {
        placement.rows[0][i] = right[i];
        placement.rows[1][i] = back[i];
        placement.rows[2][i] = up[i];
    }
    return placement;
}

SbVec3d footOf(std::vector<SbVec3d> const& points)
{
    SbVec3d low = points.front();
    SbVec3d high = points.front();
    for (SbVec3d const& point : points)
        for (int i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    return {(low[0] + high[0]) / 2, (low[1] + high[1]) / 2, low[2]};
}

} // namespace

FltTurningFace::FltTurningFace(std::vector<SbVec3d> const& points, bool isAboutPoint)
    : placement(facingPlacement(FltPolygonCutter::normalOf(points), isAboutPoint)), isAboutPoint(isAboutPoint)
{
    SbVec3d const foot = footOf(points);
    std::copy(foot.getValue(), foot.getValue() + 3, placement.origin);
    for (SbVec3d const& point : points)
        box.extendBy(SbVec3f(static_cast<float>(point[0]), static_cast<float>(point[1]),
                             static_cast<float>(point[2])));
}

FltVisualTurning FltTurningFace::turning() const
{
    FltVisualTurning turning;
    turning.foot = SbVec3d(placement.origin);
    turning.isAboutPoint = isAboutPoint;
    std::copy(&placement.rows[0][0], &placement.rows[0][0] + 9, &turning.rows[0][0]);
    return turning;
}
