#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltVisualFlipBook.h"

#include <Inventor/nodes/SoBlinker.h>
#include <vector>

/// A flip-book of a database in its scene.
struct FltSceneFlipBook : FltVisualFlipBook {
    SoNodeRef<SoBlinker> blinker; ///< It has a child for each step.

    /// Gives the blinker its children and times. It stands still, and shows the first frame.
    /// @param frames by their numbers
    void fill(std::vector<SoNodeRef<SoNode>> const& frames);

    /// Starts it, or stops it where it is.
    void play(bool isPlaying) { blinker->on = isPlaying; }
};
