#pragma once

#include "toolkit/VelloReaderExport.h"
#include "visual/FltVisualNode.h"

#include <vector>

/// What can be moved of a visual, each once, in the order of their numbers: that of FltScene's lists.
struct VELLOREADER_API FltVisualControls {
    /// @param root has to outlive this object
    explicit FltVisualControls(FltVisualNode const& root);

    std::vector<FltVisualSwitch const*> switches;    ///< All switches.
    std::vector<FltVisualJoint const*> joints;       ///< All joints.
    std::vector<FltVisualFlipBook const*> flipBooks; ///< All flip-books.
};
