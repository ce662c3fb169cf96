#include "tiles/FltTileBox.h"

#include <algorithm>

namespace
{

/// In metres. Viewers do without boxes that have no inside.
constexpr double thinnest = 0.01;

} // namespace

FltTileBox::FltTileBox(SbBox3d const& box) : center(box.getCenter())
{
    for (int axis = 0; axis < 3; ++axis) {
        SbVec3d& side = sides.at(static_cast<std::size_t>(axis));
        side = SbVec3d(0, 0, 0);
        side[axis] = std::max((box.getMax()[axis] - box.getMin()[axis]) / 2, thinnest);
    }
}

FltTileBox FltTileBox::movedBy(SbDPMatrix const& matrix) const
{
    FltTileBox moved = *this;
    matrix.multVecMatrix(center, moved.center);
    for (std::size_t i = 0; i < sides.size(); ++i)
        matrix.multDirMatrix(sides.at(i), moved.sides.at(i));
    return moved;
}

std::array<SbVec3d, 8> FltTileBox::corners() const
{
    std::array<SbVec3d, 8> all;
    for (std::size_t i = 0; i < all.size(); ++i) {
        SbVec3d& corner = all.at(i) = center;
        for (std::size_t axis = 0; axis < sides.size(); ++axis)
            corner += sides.at(axis) * ((i >> axis & 1U) != 0 ? 1 : -1);
    }
    return all;
}

std::array<double, 12> FltTileBox::numbers() const
{
    std::array<double, 12> all{};
    for (std::size_t i = 0; i < 3; ++i) {
        all.at(i) = center[static_cast<int>(i)];
        for (std::size_t side = 0; side < sides.size(); ++side)
            all.at(3 + 3 * side + i) = sides.at(side)[static_cast<int>(i)];
    }
    return all;
}
