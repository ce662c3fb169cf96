#pragma once

#include "visual/FltVisualNode.h"

#include <string>

/// What scenes tell of a node in words, for hosts that read it from a written scene.
namespace FltNodeInfos
{

std::string describe(FltVisualJoint const& joint);

/// What was taken from all places of a scene.
std::string describeOffset(double const (&offset)[3]);
std::string describe(FltVisualLevel const& level);
std::string describe(FltVisualSwitch const& choice);

} // namespace FltNodeInfos
