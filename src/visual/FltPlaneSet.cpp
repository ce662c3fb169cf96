#include "visual/FltPlaneSet.h"

#include "model/FltFaceArea.h"
#include "visual/FltPolygonCutter.h"

#include <algorithm>
#include <cmath>

namespace
{

/// Normals are one whose components differ by less.
constexpr double normalStep = 1e-4;

constexpr double partOfScale = 2e-6;

/// A corner may stand so far out of its plane, as a part of the face's size.
constexpr double unevenness = 1e-3;

/// Values this near to the end of a cell, as a part of it, may belong to the next one.
constexpr double nearEnd = 0.25;

/// Turns a plane to one of its two sides.
FltPlaneSet::Plane turned(FltPlaneSet::Plane plane)
{
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        if (std::abs(plane.normal[i]) > std::abs(plane.normal[axis]) + normalStep)
            axis = i;
    if (plane.normal[axis] < 0)
        plane = {-plane.normal, -plane.distance};
    return plane;
}

} // namespace

FltPlaneSet::FltPlaneSet(double scale) : distanceStep(std::max(scale * partOfScale, 1e-12)) {}

std::optional<FltPlaneSet::Plane> FltPlaneSet::planeOf(std::vector<SbVec3d> const& points)
{
    if (points.size() < 3)
        return std::nullopt;
    SbVec3d normal = FltPolygonCutter::normalOf(points);
    double farthest = 0;
    for (SbVec3d const& point : points)
        farthest = std::max(farthest, (point - points[0]).sqrLength());
    double const length = normal.length();
    if (!FltFaceArea::isDrawn(length, farthest) || !std::isfinite(length))
        return std::nullopt;
    normal /= length;
    double const most = unevenness * std::sqrt(farthest);
    bool const isFlat = std::all_of(points.begin(), points.end(), [&](SbVec3d const& point) {
        return std::abs((point - points[0]).dot(normal)) <= most;
    });
    return isFlat ? std::optional<Plane>({normal, normal.dot(points[0])}) : std::nullopt;
}

std::int32_t FltPlaneSet::numberOf(Plane const& plane)
{
    Plane const oneSided = turned(plane);
    SbVec3d const& normal = oneSided.normal;
    double const values[] = {normal[0] / normalStep, normal[1] / normalStep, normal[2] / normalStep,
                             oneSided.distance / distanceStep};
    Cell own{}, neighbour{};
    for (std::size_t i = 0; i < own.size(); ++i) {
        own[i] = std::llround(values[i]);
        double const rest = values[i] - static_cast<double>(own[i]);
        bool const hasNeighbour = std::abs(rest) > 0.5 - nearEnd;
        neighbour[i] = !hasNeighbour ? own[i] : rest > 0 ? own[i] + 1 : own[i] - 1;
    }
    constexpr unsigned combinations = 1U << 4;
    for (unsigned choice = 0; choice < combinations; ++choice) {
        Cell cell = own;
        bool isNew = true;
        for (std::size_t i = 0; i < cell.size(); ++i)
            if ((choice >> i & 1U) != 0) {
                isNew = isNew && neighbour[i] != own[i];
                cell[i] = neighbour[i];
            }
        auto const found = isNew ? numbers.find(cell) : numbers.end();
        if (found != numbers.end())
            return found->second;
    }
    auto const number = static_cast<std::int32_t>(numbers.size());
    return numbers.emplace(own, number).first->second;
}
