#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoSeparator.h>

/// Makes the nodes of text.
namespace FltTextNodes
{

/// @param zero what places around it count from
SoSeparator* make(FltVisualText const& text, SbVec3d const& zero = {0, 0, 0});

} // namespace FltTextNodes
