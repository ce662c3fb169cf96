#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/SbDPMatrix.h>

/// What nodes of a visual do to what stands in them, in doubles.
namespace FltNodeMatrix
{

/// Brings the children and meshes of a node into what is around it. Copies have a matrix each besides.
SbDPMatrix of(FltVisualNode const& node);

/// The part of it that the node's own matrices are.
SbDPMatrix ofTransform(FltVisualNode const& node);

/// Makes of a matrix one of numbers, and without perspective: for forms that have no other.
/// @return whether it is the same
bool makeAffine(SbDPMatrix& matrix);

/// A translation.
SbDPMatrix by(SbVec3d const& way);

} // namespace FltNodeMatrix
