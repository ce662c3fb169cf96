#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SbVec3f.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

/// Places that positions are rounded to, so that 16 bits hold each of their numbers.
struct GltfGrid {
    SbVec3d zero{0, 0, 0};
    double step = 1; ///< From one place to the next along each axis.

    /// A grid in which a box has its place. @param box isn't empty
    static GltfGrid in(SbBox3f const& box)
    {
        constexpr double most = UINT16_MAX;
        SbVec3d const size = SbVec3d(box.getMax()) - SbVec3d(box.getMin());
        double const longest = std::max({size[0], size[1], size[2]});
        return {SbVec3d(box.getMin()), longest > 0 ? longest / most : 1};
    }

    std::array<std::uint16_t, 3> rounded(SbVec3f const& position) const
    {
        std::array<std::uint16_t, 3> place{};
        for (int axis = 0; axis < 3; ++axis) {
            double const steps = std::round((static_cast<double>(position[axis]) - zero[axis]) / step);
            place[static_cast<std::size_t>(axis)] =
                static_cast<std::uint16_t>(std::clamp(steps, 0.0, static_cast<double>(UINT16_MAX)));
        }
        return place;
    }
};
