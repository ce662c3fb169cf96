#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/SbDPMatrix.h>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// The files that stand in a visual, each with its place, as often as they are drawn.
class FltTileReferences
{
public:
    using Place = std::pair<std::string, SbDPMatrix>;

    /// @param root of a visual without levels of detail (FltLevelsAtDistance); null holds nothing
    static std::vector<Place> in(std::shared_ptr<FltVisualNode const> const& root);

private:
    bool leadsToFile(FltVisualNode const& node);
    void visit(FltVisualNode const& node, SbDPMatrix const& around);

    std::unordered_map<FltVisualNode const*, bool> known; ///< Whether there are files in a node.
    std::vector<Place> places;
};
