#pragma once

#include "globe/FltGlobeMap.h"
#include "visual/FltMesh.h"

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>
#include <cstdint>
#include <optional>
#include <vector>

/// Brings meshes to the globe, corner by corner.
class FltGlobeMesh
{
public:
    /// @param map has to outlive this object
    explicit FltGlobeMesh(FltGlobeMap const& map) : map(map) {}

    /// A mesh in the frame of the map. What has no place on the earth has places that are no numbers.
    /// @param around brings the mesh's points to those of the visual
    FltMesh placed(FltMesh const& mesh, SbDPMatrix const& around);

    /// Corners that have no place on the earth.
    std::uint64_t lost() const { return lostCorners; }

private:
    void placeCorners(FltMesh const& from, SbDPMatrix const& around, FltMesh& mesh);
    void turnNormals(FltMesh const& from, SbDPMatrix const& around, FltMesh& mesh);
    SbDPMatrix const& turnNear(SbVec3d const& point);

    FltGlobeMap const& map;
    std::uint64_t lostCorners = 0;
    SbVec3d turnPoint{0, 0, 0};      ///< Where the last turn was asked for.
    std::optional<SbDPMatrix> turn;  ///< The last one.
    std::vector<SbVec3d> placedOnes; ///< Of the present mesh.
};
