#pragma once

#include "visual/FltSwitch.h"

#include <cstddef>

/// A switch in a visual. Each child of its node is one of its children; a null one draws nothing.
struct FltVisualSwitch : FltSwitch {
    std::size_t number = 0; ///< Orders all switches of a database.
};
