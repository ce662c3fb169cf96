#pragma once

#include <array>
#include <vector>

/// The shape of a polygon in space.
struct FltFaceShape {
    bool isFinite = true; ///< Whether all coordinates are numbers.
    bool hasArea = true;  ///< Whether it isn't a line or a point.
    bool isConvex = true;
    bool isFlat = true; ///< Whether all vertices lie near one plane: nearer than a hundredth of its size.

    /// @param corners three or more
    static FltFaceShape of(std::vector<std::array<double, 3>> const& corners);
};
