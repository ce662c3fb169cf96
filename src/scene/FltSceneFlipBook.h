#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltVisualFlipBook.h"

#include <Inventor/nodes/SoBlinker.h>
#include <vector>

/// A flip-book of a database in its scene.
struct FltSceneFlipBook : FltVisualFlipBook {
    std::vector<SoNodeRef<SoBlinker>> blinkers; ///< One, or two: in mirrors, and elsewhere.

    /// Makes a blinker with a child for each step. It stands still, and shows the first frame.
    /// @param frames by their numbers
    /// @return the blinker, held by the list
    SoBlinker* addBlinker(std::vector<SoNodeRef<SoNode>> const& frames);

    /// Starts it, for as many loops as it has, or stops it where it is.
    void play(bool isPlaying);
};
