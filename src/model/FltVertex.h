#pragma once

#include <cstdint>

/// One vertex of a database, of whatever form it was.
struct FltVertex {
    enum Flag : std::uint8_t {
        hasNormal = 1,
        hasUv = 2,
        hasColor = 4,
    };

    double position[3] = {};   ///< In database units.
    float normal[3] = {};      ///< Only with hasNormal.
    float uv[2] = {};          ///< Zero without hasUv.
    std::uint32_t color = ~0U; ///< Red, green, blue, and 255 as the lowest byte; only with hasColor.
    std::uint8_t flags = 0;

    bool has(Flag flag) const { return (flags & flag) != 0; }
};
