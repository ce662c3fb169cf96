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

/// A translation.
SbDPMatrix by(SbVec3d const& way);

} // namespace FltNodeMatrix
