#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoEnvironment.h>
#include <Inventor/nodes/SoLight.h>

/// Makes the nodes of lights.
namespace FltLightNodes
{

/// @param zero what places around it count from
SoLight* make(FltVisualLight const& light, SbVec3d const& zero = {0, 0, 0});

/// How a light fades with the distance: what has to stand before it.
/// @param worldPerUnit how long a unit of the light's is in the world, in which the toolkit measures
/// @return null if it doesn't fade
SoEnvironment* fadingOf(FltVisualLight const& light, double worldPerUnit);

} // namespace FltLightNodes
