#pragma once

#include <Inventor/nodes/SoSwitch.h>

/// What a database hides.
namespace FltHiddenNode
{

/// A switch that doesn't show a node, and can be told to.
inline SoSwitch* around(SoNode* node)
{
    auto* const closed = new SoSwitch;
    closed->setName("hidden");
    closed->addChild(node);
    return closed;
}

} // namespace FltHiddenNode
