#pragma once

#include "model/FltModelTree.h"
#include "visual/FltVisualSwitch.h"

/// Reads switches.
namespace FltSwitchReader
{

/// The switch of a record and of those that name its masks, without its own name.
FltVisualSwitch read(FltModelTree const& tree, FltModelTree::Number number);

} // namespace FltSwitchReader
