#pragma once

#include "visual/FltMesh.h"

#include <vector>

/// Faces that lie on others, for forms that have no other way to draw one over the other than distance.
namespace FltLiftedFaces
{

/// The positions of a mesh: those of faces that lie on others are a little in front of them, and those of
/// faces with lines over them a little behind. How much grows with the mesh, up to five centimetres a level.
/// @param metresPerUnit how long a unit of the mesh is
std::vector<SbVec3f> positions(FltMesh const& mesh, double metresPerUnit);

} // namespace FltLiftedFaces
