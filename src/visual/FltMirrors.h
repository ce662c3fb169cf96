#pragma once

#include "visual/FltVisualNode.h"

#include <vector>

/// Knows what in a visual is a mirror.
namespace FltMirrors
{

/// Whether a matrix turns left into right.
bool isMirror(SbDPMatrix const& matrix);

/// Whether a node turns what stands in it. Of joints the present values count, and copies have a place each.
bool isMirror(FltVisualNode const& node);

/// In which senses a part stands that stands at some places.
FltVisualSenses sensesOf(std::vector<SbDPMatrix> const& places);

/// Gives all nodes of a visual their senses.
void find(FltVisualNode& root);

} // namespace FltMirrors
