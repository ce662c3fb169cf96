#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/SbBox3f.h>
#include <cstdint>
#include <memory>

/// A finished part of a visual, and what it costs. It may be shared by several places.
struct FltVisualPart {
    std::shared_ptr<FltVisualNode> node; ///< Null if there is nothing to add.
    SbBox3f box;                         ///< Of all that is drawn in it.
    std::int64_t visits = 0;             ///< Nodes that a traversal of a scene of it visits.
    int depth = 0;                       ///< Nodes on the longest way down of that scene.
};
