#pragma once

#include "visual/FltVisualNode.h"

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

/// What is to be seen of a visual from a distance, as a visual without levels of detail.
class FltLevelsAtDistance
{
public:
    using Node = std::shared_ptr<FltVisualNode>;

    /// The distances at which what the levels at the top of a visual show changes, ascending, each once.
    /// Levels below others don't count.
    static std::vector<double> changesOf(FltVisualNode const& root);

    /// What is seen from a distance: of each group of levels what it shows there. At 0 that is the finest
    /// that there is.
    /// @return the visual's own nodes, but for those that lead to levels; null for null
    Node at(Node const& root, double distance);

private:
    Node chosen(Node const& node);
    bool hasLevels(FltVisualNode const& node);

    double distance = 0;
    std::unordered_map<FltVisualNode const*, bool> levelsBelow; ///< Whether there are levels in a node.
    std::unordered_map<FltVisualNode const*, Node> known;       ///< What nodes are at the distance.
};
