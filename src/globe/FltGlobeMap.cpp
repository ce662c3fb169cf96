#include "globe/FltGlobeMap.h"

#include "globe/FltWgs84.h"

#include <cmath>

namespace
{

/// Half of the way on which a direction is measured, in metres.
constexpr double step = 8;

/// Metres in which what the map does to directions changes by less than a ten thousandth of a radian.
constexpr double nearby = 500;

/// The number of the projection whose x and y are degrees, and how long one is on the ground.
constexpr int geodetic = 5;
constexpr double metresInDegree = 111000;

SbVec3d rowOf(SbDPMatrix const& matrix, int row)
{
    return {matrix[row][0], matrix[row][1], matrix[row][2]};
}

void setRow(SbDPMatrix& matrix, int row, SbVec3d const& values)
{
    for (int column = 0; column < 3; ++column)
        matrix[row][column] = values[column];
}

/// Makes rows of length 1 that stand upright on each other. What goes up stays, and what goes to the right
/// stays above or below it.
bool straighten(SbDPMatrix& turn)
{
    SbVec3d up = rowOf(turn, 2);
    bool const hasUp = up.normalize() > 0;
    SbVec3d right = rowOf(turn, 0) - up * rowOf(turn, 0).dot(up);
    bool const hasRight = right.normalize() > 0;
    setRow(turn, 0, right);
    setRow(turn, 1, up.cross(right));
    setRow(turn, 2, up);
    return hasUp && hasRight;
}

} // namespace

FltGlobeMap::FltGlobeMap(FltVisual const& visual, FltProjection const& projection)
    : visual(visual), projection(projection), zero(FltProjection::Place())
{
}

bool FltGlobeMap::moveTo(SbVec3d const& centre)
{
    std::optional<FltProjection::Place> const known = earthPlaceOf(centre);
    if (known)
        zero = FltGlobeFrame(*known);
    return known.has_value();
}

std::optional<FltProjection::Place> FltGlobeMap::earthPlaceOf(SbVec3d const& point) const
{
    double const unit = visual.metresPerUnit / projection.metresInUnit();
    SbVec3d const stored = (point + SbVec3d(visual.info.offset)) * unit;
    return projection.placeOf({stored[0], stored[1], stored[2]});
}

std::optional<SbVec3d> FltGlobeMap::placeOf(SbVec3d const& point) const
{
    std::optional<FltProjection::Place> const known = earthPlaceOf(point);
    if (!known)
        return std::nullopt;
    return zero.fromEarth(FltWgs84::geocentric(*known));
}

/// How long a metre on the ground is along an axis of the visual, roughly.
double FltGlobeMap::unitsPerMetre(int axis) const
{
    bool const isInDegrees = visual.info.projection == geodetic && axis < 2;
    return isInDegrees ? projection.metresInUnit() / (visual.metresPerUnit * metresInDegree)
                       : 1 / visual.metresPerUnit;
}

bool FltGlobeMap::areNear(SbVec3d const& one, SbVec3d const& other) const
{
    SbVec3d way = one - other;
    for (int axis = 0; axis < 3; ++axis)
        way[axis] /= unitsPerMetre(axis);
    return way.length() < nearby;
}

std::optional<SbDPMatrix> FltGlobeMap::turnAt(SbVec3d const& point) const
{
    SbDPMatrix turn = SbDPMatrix::identity();
    for (int axis = 0; axis < 3; ++axis) {
        double const half = step * unitsPerMetre(axis);
        SbVec3d way(0, 0, 0);
        way[axis] = half;
        std::optional<SbVec3d> const after = placeOf(point + way);
        std::optional<SbVec3d> const before = placeOf(point - way);
        if (!after || !before)
            return std::nullopt;
        setRow(turn, axis, (*after - *before) / (2 * half));
    }
    return turn;
}

std::optional<SbDPMatrix> FltGlobeMap::standOf(SbDPMatrix const& around, SbVec3d const& middle,
                                               bool isModel) const
{
    SbVec3d point;
    around.multVecMatrix(middle, point);
    std::optional<SbVec3d> const place = placeOf(point);
    std::optional<SbDPMatrix> turn = turnAt(point);
    if (!place || !turn || (isModel && !straighten(*turn)))
        return std::nullopt;
    SbDPMatrix stand = around;
    setRow(stand, 3, SbVec3d(0, 0, 0));
    if (isModel) {
        SbDPMatrix metres;
        metres.setScale(visual.metresPerUnit);
        stand.multRight(metres);
    }
    stand.multRight(*turn);
    SbVec3d way;
    stand.multDirMatrix(middle, way);
    setRow(stand, 3, *place - way);
    return stand;
}
