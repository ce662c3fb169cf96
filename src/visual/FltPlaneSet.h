#pragma once

#include <Inventor/SbVec3d.h>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

/// Tells planes apart: faces that lie in one plane, whichever way they look, get the same number.
class FltPlaneSet
{
public:
    static constexpr std::int32_t none = -1;

    /// A plane: all points whose product with the normal is the distance.
    struct Plane {
        SbVec3d normal; ///< Of length 1.
        double distance = 0;
    };

    /// @param scale how far from the origin the faces are: distances that differ by less than a millionth
    ///              part of it are one
    explicit FltPlaneSet(double scale);

    /// The plane in which all of some points lie.
    /// @return nothing if they don't, or if there are many such planes
    static std::optional<Plane> planeOf(std::vector<SbVec3d> const& points);

    /// The number of a plane.
    std::int32_t numberOf(Plane const& plane);

private:
    using Cell = std::array<std::int64_t, 4>;

    double distanceStep;
    std::map<Cell, std::int32_t> numbers;
};
