#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltVisualSwitch.h"

#include <Inventor/nodes/SoSwitch.h>
#include <vector>

/// A switch of a database in its scene.
struct FltSceneSwitch : FltVisualSwitch {
    SoNode const* node = nullptr; ///< That of the record.

    /// One for each child of the record, in their order: it shows all below it, or nothing.
    std::vector<SoNodeRef<SoSwitch>> doors;

    /// Shows the children of a mask. @return whether there is such a mask
    bool choose(int mask);

    /// What the node of a door is told to show.
    int shownBy(std::size_t door) const { return shows(currentMask, door) ? SO_SWITCH_ALL : SO_SWITCH_NONE; }
};
