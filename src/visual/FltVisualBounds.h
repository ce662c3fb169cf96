#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/SbBox3d.h>
#include <unordered_map>

/// How large parts of a visual are. What was measured once is known.
class FltVisualBounds
{
public:
    /// The radius of a ball around all that stands in a node, in the units around it.
    double radiusOf(FltVisualNode const& node);

    /// The box of all that stands in a node, in the coordinates around it.
    SbBox3d boxOf(FltVisualNode const& node);

private:
    SbBox3d const& insideOf(FltVisualNode const& node);

    std::unordered_map<FltVisualNode const*, SbBox3d> insides; ///< In their own coordinates.
};
