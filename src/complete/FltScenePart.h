#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/nodes/SoNode.h>
#include <cstdint>

/// A finished part of the scene, and what it costs. It may be shared by several places.
struct FltScenePart {
    SoNodeRef<SoNode> node;  ///< Null if there is nothing to add.
    SbBox3f box;             ///< Of all that is drawn in it.
    std::int64_t visits = 0; ///< Nodes that a traversal of it visits.
    int depth = 0;           ///< Nodes on its longest way down.
};
