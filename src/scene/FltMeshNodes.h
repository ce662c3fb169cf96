#pragma once

#include "scene/FltAppearanceNodes.h"
#include "visual/FltMesh.h"

#include <Inventor/nodes/SoGroup.h>

/// Makes the nodes of meshes.
namespace FltMeshNodes
{

/// What becomes of the arrays of a mesh: a large one takes as much memory as its nodes.
enum class Arrays {
    kept,
    freed ///< Each as soon as it is in its node. The mesh is of no use then, but for its parts.
};

/// A separator with all nodes of a mesh, the shape last, or a switch that doesn't show it.
/// @param isMirrored whether it stands in an odd number of mirrors
/// @param zero       what places around it count from
SoGroup* make(FltMesh& mesh, Arrays arrays, FltAppearanceNodes& appearances, bool isMirrored = false,
              SbVec3d const& zero = {0, 0, 0});

/// Adds all nodes of a mesh to a separator in which nothing comes after them. It is shown even if it is
/// hidden.
void addTo(SoGroup& group, FltMesh& mesh, Arrays arrays, FltAppearanceNodes& appearances,
           bool isMirrored = false, SbVec3d const& zero = {0, 0, 0});

} // namespace FltMeshNodes
