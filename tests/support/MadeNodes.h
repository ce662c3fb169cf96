#pragma once

#include "visual/FltVisualNode.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Nodes of a visual that a test puts together.
namespace MadeNodes
{

using Node = std::shared_ptr<FltVisualNode>;

inline Node named(std::string const& name, std::vector<Node> children = {})
{
    auto made = std::make_shared<FltVisualNode>();
    made->name = name;
    made->children = std::move(children);
    return made;
}

/// A node without a name.
inline Node node(std::vector<Node> children = {})
{
    return named("", std::move(children));
}

} // namespace MadeNodes
