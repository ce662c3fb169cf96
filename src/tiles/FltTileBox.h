#pragma once

#include <Inventor/SbBox3d.h>
#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>
#include <array>

/// A box of any direction, as tilesets tell it: its middle, and half of each of its sides.
class FltTileBox
{
public:
    /// A box along the axes. What is flat gets a centimetre.
    explicit FltTileBox(SbBox3d const& box);

    /// The box where a matrix brings it that turns, and moves: place * matrix.
    FltTileBox movedBy(SbDPMatrix const& matrix) const;

    std::array<SbVec3d, 8> corners() const;
    SbVec3d const& middle() const { return center; }

    /// From corner to corner.
    double diagonal() const { return 2 * (sides[0] + sides[1] + sides[2]).length(); }

    /// The twelve numbers of a tileset.
    std::array<double, 12> numbers() const;

private:
    SbVec3d center;
    std::array<SbVec3d, 3> sides; ///< Half of each.
};
