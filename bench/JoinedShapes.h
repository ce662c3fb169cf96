#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoSeparator.h>

/// What drawing can cost at the least: the triangles of a scene in one shape for each texture and
/// transparency.
namespace JoinedShapes
{

SoNodeRef<SoSeparator> of(SoNode* scene);

} // namespace JoinedShapes
