#pragma once

#include <functional>

class SoNode;

/// Walks through scene graphs.
namespace SceneNodes
{

/// Shows a function every node of a scene once, however often it is used: children, and nodes in fields of
/// one node. It may change the children of the node that it is shown.
/// @param root may be null
void forEach(SoNode* root, std::function<void(SoNode& node)> const& function);

} // namespace SceneNodes
