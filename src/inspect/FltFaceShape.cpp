#include "inspect/FltFaceShape.h"

#include "model/FltFaceArea.h"

#include <algorithm>
#include <cmath>

namespace
{

using Vector = std::array<double, 3>;

Vector difference(Vector const& a, Vector const& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vector cross(Vector const& a, Vector const& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double dot(Vector const& a, Vector const& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// The normal whose length is twice the area.
Vector areaNormal(std::vector<Vector> const& corners)
{
    Vector sum{};
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        Vector const part = cross(difference(corners[i], corners[0]), difference(corners[i + 1], corners[0]));
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum[axis] += part[axis];
    }
    return sum;
}

/// The diagonal of the box around it.
double sizeOf(std::vector<Vector> const& corners)
{
    Vector least = corners[0], most = corners[0];
    for (Vector const& corner : corners)
        for (std::size_t axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], corner[axis]);
            most[axis] = std::max(most[axis], corner[axis]);
        }
    Vector const diagonal = difference(most, least);
    return std::sqrt(dot(diagonal, diagonal));
}

/// Whether every corner turns to the same side.
bool turnsOneWay(std::vector<Vector> const& corners, Vector const& normal, double size)
{
    std::size_t const count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        Vector const& here = corners[(i + 1) % count];
        Vector const turn = cross(difference(here, corners[i]), difference(corners[(i + 2) % count], here));
        if (dot(turn, normal) < -1e-6 * size * size)
            return false;
    }
    return true;
}

} // namespace

FltFaceShape FltFaceShape::of(std::vector<Vector> const& corners)
{
    FltFaceShape shape;
    for (Vector const& corner : corners)
        if (!std::isfinite(corner[0]) || !std::isfinite(corner[1]) || !std::isfinite(corner[2])) {
            shape.isFinite = false;
            return shape;
        }
    Vector normal = areaNormal(corners);
    double const length = std::sqrt(dot(normal, normal));
    double const size = sizeOf(corners);
    double farthest = 0;
    for (Vector const& corner : corners) {
        Vector const way = difference(corner, corners[0]);
        farthest = std::max(farthest, dot(way, way));
    }
    shape.hasArea = FltFaceArea::isDrawn(length, farthest);
    if (!shape.hasArea || !std::isfinite(length))
        return shape;
    for (double& component : normal)
        component /= length;
    shape.isConvex = turnsOneWay(corners, normal, size);
    for (Vector const& corner : corners)
        shape.isFlat = shape.isFlat && std::abs(dot(difference(corner, corners[0]), normal)) < 0.01 * size;
    return shape;
}
