#pragma once

#include <string>
#include <vector>

/// A switch of a database: it shows those of its children that a mask says.
struct FltSwitch {
    std::string name;                   ///< Of the record; several may have it.
    std::vector<std::string> maskNames; ///< One for each mask, by its number; empty where it has no name.
    int currentMask = 0;                ///< The mask that it shows, from 0 on.
};
