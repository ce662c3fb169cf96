#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A switch of a database: it shows those of its children that a mask says.
struct FltSwitch {
    std::string name;                   ///< Of the record; several may have it.
    std::vector<std::string> maskNames; ///< One for each mask, by its number; empty where it has no name.
    int currentMask = 0;                ///< The mask that it shows, from 0 on.
    std::vector<std::uint32_t> masks;   ///< The words of all masks, one mask after the other.
    std::size_t wordsPerMask = 0; ///< How many a mask has, of 32 children each; the lowest bit is the first.

    /// How many masks there are.
    int getMaskCount() const { return wordsPerMask == 0 ? 0 : static_cast<int>(masks.size() / wordsPerMask); }

    /// Whether a mask shows a child, both counted from 0 on. A mask that isn't there shows none.
    bool shows(int mask, std::size_t child) const
    {
        if (mask < 0 || mask >= getMaskCount() || child / 32 >= wordsPerMask)
            return false;
        std::uint32_t const word = masks[static_cast<std::size_t>(mask) * wordsPerMask + child / 32];
        return (word >> child % 32 & 1) != 0;
    }
};
