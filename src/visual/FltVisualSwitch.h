#pragma once

#include "visual/FltSwitch.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// A switch with its masks. Each child of its node is one of its children; a null one draws nothing.
struct FltVisualSwitch : FltSwitch {
    std::vector<std::uint32_t> masks; ///< The words of all masks, one mask after the other.
    std::size_t wordsPerMask = 0;     ///< Of 32 children each; the lowest bit is the first.
    std::size_t number = 0;           ///< Orders all switches of a database.

    /// How many masks there are.
    int getMaskCount() const { return wordsPerMask == 0 ? 0 : static_cast<int>(masks.size() / wordsPerMask); }

    /// Whether a mask shows a child. A mask that isn't there shows none.
    bool shows(int mask, std::size_t child) const
    {
        if (mask < 0 || mask >= getMaskCount() || child / 32 >= wordsPerMask)
            return false;
        std::uint32_t const word = masks[static_cast<std::size_t>(mask) * wordsPerMask + child / 32];
        return (word >> child % 32 & 1) != 0;
    }
};
