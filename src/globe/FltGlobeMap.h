#pragma once

#include "globe/FltGlobeFrame.h"
#include "loader/FltProjection.h"
#include "loader/FltVisual.h"

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>
#include <optional>

/// Brings places of a visual to those of a frame on the globe.
class FltGlobeMap
{
public:
    /// @param visual     has to outlive this object, as has the projection
    /// @param projection of the visual's database; a known one
    FltGlobeMap(FltVisual const& visual, FltProjection const& projection);

    /// Has places count from one of the visual. Until then they count from 0 N 0 E.
    /// @return whether it has a place on the earth
    bool moveTo(SbVec3d const& centre);

    FltGlobeFrame const& frame() const { return zero; }

    /// A place of the visual in the frame; none if it has none on the earth.
    std::optional<SbVec3d> placeOf(SbVec3d const& point) const;

    /// What the map does to short ways at a place: they are turned and stretched.
    /// @return nothing if there is no such place
    std::optional<SbDPMatrix> turnAt(SbVec3d const& point) const;

    /// Whether what turnAt() gives for one point will do for another.
    bool areNear(SbVec3d const& one, SbVec3d const& other) const;

    /// Brings a part to where it stands on the globe, as a whole: nothing in it is bent.
    /// @param around  brings the part's points to those of the visual
    /// @param middle  a point of the part, which stands where the map has it
    /// @param isModel whether lengths and angles stay as they are; otherwise it is stretched like what is
    ///                 around it
    /// @return nothing if there is no such place
    std::optional<SbDPMatrix> standOf(SbDPMatrix const& around, SbVec3d const& middle, bool isModel) const;

    /// The length of the visual's unit.
    double metresPerUnit() const { return visual.metresPerUnit; }

private:
    std::optional<FltProjection::Place> earthPlaceOf(SbVec3d const& point) const;
    double unitsPerMetre(int axis) const;

    FltVisual const& visual;
    FltProjection const& projection;
    FltGlobeFrame zero;
};
