#pragma once

#include "visual/FltVisualNode.h"

#include <memory>
#include <type_traits>

/// Nodes that are made after others.
namespace FltNodeCopy
{

/// A node with what people call and say of another one. Nothing stands in it.
inline std::shared_ptr<FltVisualNode> namedLike(FltVisualNode const& from)
{
    auto node = std::make_shared<FltVisualNode>();
    node->name = from.name;
    node->comments = from.comments;
    node->record = from.record;
    node->isHidden = from.isHidden;
    return node;
}

/// Has a node be what another one is besides a group, if that is one of these.
template <class... Parts>
void takeContent(FltVisualNode const& from, FltVisualNode& node)
{
    auto const copy = [&](auto const* part) {
        if (part != nullptr)
            node.become<std::decay_t<decltype(*part)>>(*part);
    };
    (copy(from.as<Parts>()), ...);
}

} // namespace FltNodeCopy
