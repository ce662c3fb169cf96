#pragma once

#include "toolkit/SoNodeRef.h"
#include "visual/FltVisualOptions.h"

#include <Inventor/nodes/SoNode.h>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The names of a scene's nodes, which they get when nothing of its load can fail any more: the toolkit keeps
/// every name that a node ever had, and would keep those of a scene that nobody gets.
class FltNodeNames
{
public:
    /// Notes the name that a node is to bear, cut if it is too long.
    void add(SoNode* node, std::string_view name);

    /// Names the nodes, or those that are wanted of them, and forgets all.
    void give(FltVisualOptions::Names wanted = FltVisualOptions::Names::all);

private:
    void keepUnique();

    struct Name {
        SoNodeRef<SoNode> node;
        std::size_t begin; ///< In the text.
    };

    std::vector<Name> names;
    std::string text; ///< Of all names. A zero ends each.
};
