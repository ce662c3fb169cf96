#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoSeparator.h>

/// Makes the nodes of text.
namespace FltTextNodes
{

SoSeparator* make(FltVisualText const& text);

} // namespace FltTextNodes
