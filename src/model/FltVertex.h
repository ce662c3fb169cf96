#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

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

    /// Whether it can be drawn where it stands: not if a coordinate is no number, or beyond all others.
    bool hasUsablePlace() const { return isUsable(position[0], position[1], position[2]); }

    static bool isUsable(double x, double y, double z)
    {
        constexpr double most = 1e30;
        return std::abs(x) < most && std::abs(y) < most && std::abs(z) < most;
    }

    void setNormal(float const (&value)[3])
    {
        std::copy(std::begin(value), std::end(value), normal);
        flags |= hasNormal;
    }
    void setUv(float const (&value)[2])
    {
        std::copy(std::begin(value), std::end(value), uv);
        flags |= hasUv;
    }
    void setColor(std::uint32_t value)
    {
        color = value;
        flags |= hasColor;
    }

    /// A vertex on the way from one to another. It has what both have.
    /// @param part of the way that lies before it
    static FltVertex between(FltVertex const& from, FltVertex const& to, double part);
};
