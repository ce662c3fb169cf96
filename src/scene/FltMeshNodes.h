#pragma once

#include "scene/FltAppearanceNodes.h"
#include "visual/FltMesh.h"

#include <Inventor/nodes/SoGroup.h>

/// Makes the nodes of meshes.
namespace FltMeshNodes
{

/// A separator with all nodes of a mesh, or a switch that doesn't show it.
SoGroup* make(FltMesh const& mesh, FltAppearanceNodes& appearances);

} // namespace FltMeshNodes
