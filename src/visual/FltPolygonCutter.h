#pragma once

#include <Inventor/SbVec3d.h>
#include <cstdint>
#include <vector>

/// Cuts polygons into pieces that the toolkit draws as they are meant: it takes every polygon for a convex
/// one, and cuts it into triangles from its first corner on.
class FltPolygonCutter
{
public:
    /// Ends each polygon in a list of corners.
    static constexpr int end = -1;

    /// Twice the area of a polygon, as a vector along its normal.
    static SbVec3d normalOf(std::vector<SbVec3d> const& corners);

    /// Whether a polygon spans an area that is drawn. One whose outline crosses itself spans two triangles.
    /// @param normal what normalOf() gives for the corners
    static bool hasArea(std::vector<SbVec3d> const& corners, SbVec3d const& normal);

    /// Whether a polygon bends inwards nowhere, and goes round once.
    /// @param corners three or more
    /// @param normal  what normalOf() gives for them; not zero
    bool isConvex(std::vector<SbVec3d> const& corners, SbVec3d const& normal);

    /// Whether no corner is farther from the plane than a thousandth of the size.
    static bool isFlat(std::vector<SbVec3d> const& corners, SbVec3d const& normal);

    /// Cuts a polygon.
    /// @param corners three or more
    /// @param normal  what normalOf() gives for them; not zero
    /// @return the numbers of the corners of each piece, with an end after each. It stays valid until the
    ///         next call.
    std::vector<int> const& cut(std::vector<SbVec3d> const& corners, SbVec3d const& normal);

private:
    struct Point {
        double x;
        double y;
    };

    void project(std::vector<SbVec3d> const& corners, SbVec3d const& normal);
    int findInnerCorner() const;
    bool turnsOnce() const;
    double area(int a, int b, int c) const;
    bool isInner(int a, int b, int c) const;
    void addWhole(int first);
    void clipEars();
    bool isEar(int a, int b, int c);
    void addTriangle(int a, int b, int c);

    std::vector<Point> points;
    std::vector<int> pieces;
    std::vector<int> previous;
    std::vector<int> next;
    std::vector<int> inner; ///< Corners that bend inwards.

    /// Comparisons that are left. A polygon of n corners may take the square of n, so a file of large ones
    /// would take for ever.
    std::int64_t steps = 1'000'000'000;
};
