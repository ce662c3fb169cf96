#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoLight.h>

/// Makes the nodes of lights.
namespace FltLightNodes
{

SoLight* make(FltVisualLight const& light);

} // namespace FltLightNodes
