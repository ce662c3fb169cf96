#pragma once

#include "visual/FltMesh.h"

#include <vector>

/// Faces that lie on others, for forms that have no other way to draw one over the other than distance.
namespace FltLiftedFaces
{

/// How far a face stands in front of the one that it lies on: so little that nobody sees the gap from nearby,
/// five centimetres at most, and so much that it is told apart where all of it is seen.
/// @param extent        of what is seen as a whole
/// @param partOfExtent  that can be told apart
/// @param metresPerUnit of the extent and the result
double liftOfALevel(double extent, double partOfExtent, double metresPerUnit);

/// Whether a mesh is drawn elsewhere than where it is stored.
bool areLifted(FltMesh const& mesh);

/// The positions of a mesh: those of faces that lie on others are a little in front of them, and those of
/// faces with lines over them half as much behind.
/// @param liftOfALevel in the units of the mesh
std::vector<SbVec3f> positions(FltMesh const& mesh, double liftOfALevel);

} // namespace FltLiftedFaces
