#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltVisualSwitch.h"

#include <Inventor/nodes/SoSwitch.h>
#include <algorithm>
#include <cstddef>
#include <vector>

/// A switch of a database in its scene.
struct FltSceneSwitch : FltVisualSwitch {
    std::vector<SoNode const*> nodes; ///< That of the record, or two: one in mirrors, and one elsewhere.

    /// One for each child of the record, in their order: it shows all below it, or nothing. A second node has
    /// as many once more.
    std::vector<SoNodeRef<SoSwitch>> doors;

    /// Shows the children of a mask. @return whether there is such a mask
    bool choose(int mask);

    /// What the node of a door is told to show.
    int shownBy(std::size_t door) const
    {
        std::size_t const children = doors.size() / std::max<std::size_t>(nodes.size(), 1);
        return shows(currentMask, door % children) ? SO_SWITCH_ALL : SO_SWITCH_NONE;
    }
};
