#pragma once

#include "visual/FltMesh.h"

#include <Inventor/SbDPMatrix.h>
#include <vector>

/// Puts meshes of one look together into one.
namespace FltMeshJoiner
{

/// A mesh on its way into another one.
struct Source {
    FltMesh mesh;
    SbDPMatrix matrix;      ///< Brings it into the coordinates of the other; it is affine, and no mirror.
    FltVisualRecord record; ///< That it comes from.
};

/// Whether a mesh can be drawn in the same shape as others.
bool mayJoin(FltMesh const& mesh);

/// Whether two of those that may look alike.
bool lookAlike(FltMesh const& left, FltMesh const& right);

/// A number that is the same of all that look alike.
std::size_t hashOf(FltMesh const& mesh);

/// The place of a corner in the coordinates of the joined mesh.
SbVec3d placeOf(Source const& source, SbVec3f const& position);

/// The meshes as one.
/// @param sources at least one; all look alike
FltMesh join(std::vector<Source*> const& sources, double metresPerUnit);

} // namespace FltMeshJoiner
