#pragma once

#include <Inventor/SbVec3d.h>
#include <array>
#include <optional>

/// A polygon of four corners whose outline crosses itself, which covers two triangles.
struct FltBowTie {
    /// A corner of the outline, or the place where it crosses itself.
    static constexpr int crossing = 4;

    /// @return none if the outline doesn't cross itself
    static std::optional<FltBowTie> find(std::array<SbVec3d, 4> const& corners);

    int first = 0;         ///< The corner where the first of the edges that cross begins: 0 or 1.
    double alongFirst = 0; ///< Where on it they cross: 0 at its beginning, 1 at its end.
    double alongOther = 0; ///< The same on the other edge, which begins two corners later.

    /// The corners of both triangles, which are seen from the same side: the one from which the larger
    /// triangle is seen, or that of the first corner.
    std::array<std::array<int, 3>, 2> triangles{};
};
