#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoNode.h>
#include <utility>
#include <vector>

/// Which record each node of a scene comes from. Nodes that a record needed besides have none of their own:
/// they stand below one that has.
class FltNodeRecords
{
public:
    /// Notes the record of a node, which must not be noted twice.
    void add(SoNode const* node, FltVisualNode::Record const& record);

    /// Has find() know what was noted.
    void finish();

    /// The record of a node, or else that of the nearest node above it that has one.
    /// @return null for a node that isn't of the scene
    FltVisualNode::Record const* find(SoNode const& node) const;

private:
    FltVisualNode::Record const* ownOf(SoNode const* node) const;

    std::vector<std::pair<SoNode const*, FltVisualNode::Record>> records; ///< By address.
};
