#include "visual/FltPolygonCutter.h"

#include "model/FltBowTie.h"
#include "model/FltFaceArea.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{

/// A turn is inwards if its sine is below this: single precision leaves less on a straight edge.
constexpr double straight = 1e-7;

/// A polygon counts as flat if no corner is farther from its plane than this part of its size.
constexpr double flat = 1e-3;

bool isBowTie(std::vector<SbVec3d> const& corners)
{
    return corners.size() == 4 && FltBowTie::find({corners[0], corners[1], corners[2], corners[3]});
}

} // namespace

SbVec3d FltPolygonCutter::normalOf(std::vector<SbVec3d> const& corners)
{
    SbVec3d normal(0, 0, 0);
    for (std::size_t i = 1; i + 1 < corners.size(); ++i)
        normal += (corners[i] - corners[0]).cross(corners[i + 1] - corners[0]);
    return normal;
}

std::vector<int> const& FltPolygonCutter::cut(std::vector<SbVec3d> const& corners, SbVec3d const& normal)
{
    pieces.clear();
    project(corners, normal);
    if (corners.size() == 3) {
        addWhole(0);
        return pieces;
    }
    int const innerCorner = findInnerCorner();
    if (corners.size() == 4)
        addWhole(std::max(innerCorner, 0));
    else if (innerCorner < 0 && turnsOnce() && isFlat(corners, normal))
        addWhole(0);
    else
        clipEars();
    return pieces;
}

/// Looks at the polygon along the axis nearest to its normal, so that its corners go counter-clockwise.
void FltPolygonCutter::project(std::vector<SbVec3d> const& corners, SbVec3d const& normal)
{
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        if (std::abs(normal[i]) > std::abs(normal[axis]))
            axis = i;
    int u = (axis + 1) % 3;
    int v = (axis + 2) % 3;
    if (normal[axis] < 0)
        std::swap(u, v);
    points.clear();
    for (SbVec3d const& corner : corners)
        points.push_back({corner[u] - corners[0][u], corner[v] - corners[0][v]});
}

bool FltPolygonCutter::hasArea(std::vector<SbVec3d> const& corners, SbVec3d const& normal)
{
    double farthest = 0;
    for (SbVec3d const& corner : corners)
        farthest = std::max(farthest, (corner - corners[0]).sqrLength());
    return FltFaceArea::isDrawn(normal.length(), farthest) || isBowTie(corners);
}

bool FltPolygonCutter::isConvex(std::vector<SbVec3d> const& corners, SbVec3d const& normal)
{
    if (isBowTie(corners))
        return false;
    project(corners, normal);
    return findInnerCorner() < 0 && turnsOnce();
}

bool FltPolygonCutter::isFlat(std::vector<SbVec3d> const& corners, SbVec3d const& normal)
{
    double const length = normal.length();
    double size = 0;
    double bend = 0;
    for (SbVec3d const& corner : corners) {
        SbVec3d const arm = corner - corners[0];
        size = std::max(size, arm.length());
        bend = std::max(bend, std::abs(arm.dot(normal)) / length);
    }
    return bend <= flat * size;
}

double FltPolygonCutter::area(int a, int b, int c) const
{
    Point const& p = points[static_cast<std::size_t>(a)];
    Point const& q = points[static_cast<std::size_t>(b)];
    Point const& r = points[static_cast<std::size_t>(c)];
    return (q.x - p.x) * (r.y - p.y) - (r.x - p.x) * (q.y - p.y);
}

bool FltPolygonCutter::isInner(int a, int b, int c) const
{
    Point const& p = points[static_cast<std::size_t>(a)];
    Point const& q = points[static_cast<std::size_t>(b)];
    Point const& r = points[static_cast<std::size_t>(c)];
    double const lengths = std::hypot(q.x - p.x, q.y - p.y) * std::hypot(r.x - q.x, r.y - q.y);
    return area(a, b, c) < -straight * lengths;
}

/// The first corner that bends inwards; -1 if none does.
int FltPolygonCutter::findInnerCorner() const
{
    int const count = static_cast<int>(points.size());
    for (int i = 0; i < count; ++i)
        if (isInner((i + count - 1) % count, i, (i + 1) % count))
            return i;
    return -1;
}

/// Whether the outline goes round once: one that crosses itself may turn the same way at all its corners.
bool FltPolygonCutter::turnsOnce() const
{
    int changes = 0;
    double before = 0;
    for (std::size_t i = 0; i <= 2 * points.size(); ++i) {
        double const way = points[(i + 1) % points.size()].x - points[i % points.size()].x;
        if (way == 0)
            continue;
        changes += way * before < 0 && i >= points.size() ? 1 : 0;
        before = way;
    }
    return changes <= 3;
}

void FltPolygonCutter::addWhole(int first)
{
    int const count = static_cast<int>(points.size());
    for (int i = 0; i < count; ++i)
        pieces.push_back((first + i) % count);
    pieces.push_back(end);
}

void FltPolygonCutter::addTriangle(int a, int b, int c)
{
    pieces.insert(pieces.end(), {a, b, c, end});
}

/// Cuts off corners that nothing reaches into, until three are left. Where an outline that crosses itself has
/// none, any corner will do.
void FltPolygonCutter::clipEars()
{
    int const count = static_cast<int>(points.size());
    previous.resize(points.size());
    next.resize(points.size());
    inner.clear();
    for (int i = 0; i < count; ++i) {
        previous[static_cast<std::size_t>(i)] = (i + count - 1) % count;
        next[static_cast<std::size_t>(i)] = (i + 1) % count;
        if (area((i + count - 1) % count, i, (i + 1) % count) <= 0)
            inner.push_back(i);
    }
    int left = count;
    int tried = 0;
    int corner = 0;
    while (left > 3) {
        int const before = previous[static_cast<std::size_t>(corner)];
        int const after = next[static_cast<std::size_t>(corner)];
        if (tried <= left && steps > 0 && !isEar(before, corner, after)) {
            corner = after;
            ++tried;
            continue;
        }
        addTriangle(before, corner, after);
        next[static_cast<std::size_t>(before)] = after;
        previous[static_cast<std::size_t>(after)] = before;
        next[static_cast<std::size_t>(corner)] = corner; // gone
        corner = after;
        tried = 0;
        --left;
    }
    addTriangle(previous[static_cast<std::size_t>(corner)], corner, next[static_cast<std::size_t>(corner)]);
}

/// Whether no other corner stands in the triangle. Only those that bend inwards can.
bool FltPolygonCutter::isEar(int a, int b, int c)
{
    double const size = area(a, b, c);
    if (size < 0)
        return false;
    if (size == 0)
        return true;
    steps -= static_cast<std::int64_t>(inner.size());
    auto const isAt = [this](int left, int right) {
        Point const& p = points[static_cast<std::size_t>(left)];
        Point const& q = points[static_cast<std::size_t>(right)];
        return p.x == q.x && p.y == q.y;
    };
    return std::none_of(inner.begin(), inner.end(), [&](int i) {
        return next[static_cast<std::size_t>(i)] != i && i != a && i != b && i != c && area(a, b, i) >= 0 &&
               area(b, c, i) >= 0 && area(c, a, i) >= 0 && !isAt(i, a) && !isAt(i, b) && !isAt(i, c);
    });
}
