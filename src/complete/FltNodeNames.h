#pragma once

#include "toolkit/SoNodeRef.h"

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
    /// Notes the name that a node is to bear, cut if it is too long. Somebody else has to hold a reference to
    /// the node before the next name is noted; otherwise it counts as left out of the scene.
    void add(SoNode* node, std::string_view name);

    /// Names the nodes that somebody else holds a reference to, and forgets all.
    void give();

private:
    struct Name {
        SoNodeRef<SoNode> node;
        std::size_t begin; ///< In the text.
    };

    void dropLeftOut();

    std::vector<Name> names;
    std::string text;             ///< Of all names. A zero ends each.
    std::size_t mostNames = 1024; ///< Before those of nodes that were left out are dropped.
};
