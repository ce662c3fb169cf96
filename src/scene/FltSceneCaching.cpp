#include "scene/FltSceneCaching.h"

#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/nodes/SoBlinker.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoLight.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoTransparencyType.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace
{

/// A list of one shape saves nothing: the toolkit has its corners in the driver's memory anyway.
constexpr int fewestShapes = 2;

/// What stands in a part of a scene.
struct Content {
    bool changes = false;
    std::int64_t shapes = 0;
    std::int64_t corners = 0;

    bool mayBeKept() const { return !changes && corners <= FltSceneCaching::mostCorners; }

    void add(Content const& part)
    {
        changes = changes || part.changes;
        shapes += part.shapes;
        corners += part.corners;
    }
};

template <class Node>
Node const* as(SoNode const& node)
{
    return node.isOfType(Node::getClassTypeId()) ? static_cast<Node const*>(&node) : nullptr;
}

std::int64_t cornersOf(SoShape const& shape)
{
    if (auto const* const indexed = as<SoIndexedShape>(shape))
        return indexed->coordIndex.getNum();
    auto const* const points = as<SoPointSet>(shape);
    SoNode const* const property = points != nullptr ? points->vertexProperty.getValue() : nullptr;
    return property != nullptr ? static_cast<SoVertexProperty const*>(property)->vertex.getNum() : 0;
}

bool changesByItself(SoNode const& node)
{
    if (auto const* const blending = as<SoTransparencyType>(node))
        return blending->value.getValue() != SoTransparencyType::NONE;
    return as<SoLOD>(node) != nullptr || as<SoVRMLBillboard>(node) != nullptr ||
           as<SoBlinker>(node) != nullptr || as<SoLight>(node) != nullptr;
}

class Arrangement
{
public:
    explicit Arrangement(std::unordered_set<SoNode const*> const& changing) : changing(changing) {}

    /// What stands in a node, in which caching is arranged unless the node as a whole may be kept.
    Content arrange(SoNode& node)
    {
        if (as<SoGroup>(node) == nullptr)
            return contentOfLeaf(node);
        auto const known = contents.find(&node);
        if (known != contents.end())
            return known->second;
        auto& group = static_cast<SoGroup&>(node);
        Content const content = arrangeGroup(group);
        bool const isAskedAgain = group.getRefCount() > 1 || as<SoSeparator>(node) == nullptr;
        if (isAskedAgain)
            contents.emplace(&node, content);
        return content;
    }

    /// Has a part be kept, or the parts that it consists of.
    void keep(SoNode& node, Content const& content)
    {
        if (content.shapes < fewestShapes)
            return;
        if (auto* const separator = const_cast<SoSeparator*>(as<SoSeparator>(node))) {
            separator->renderCaching = SoSeparator::ON;
            separator->boundingBoxCaching = SoSeparator::ON;
        } else if (auto* const group = const_cast<SoGroup*>(as<SoGroup>(node))) {
            for (int i = 0; i < group->getNumChildren(); ++i)
                keep(*group->getChild(i), arrange(*group->getChild(i)));
        }
    }

private:
    bool changes(SoNode const& node) const { return changesByItself(node) || changing.count(&node) != 0; }

    Content contentOfLeaf(SoNode const& node) const
    {
        Content content;
        content.changes = changes(node);
        if (auto const* const shape = as<SoShape>(node)) {
            content.shapes = 1;
            content.corners = cornersOf(*shape);
        }
        return content;
    }

    Content arrangeGroup(SoGroup& group)
    {
        Content all;
        all.changes = changes(group);
        std::vector<Content> parts;
        for (int i = 0; i < group.getNumChildren(); ++i) {
            parts.push_back(arrange(*group.getChild(i)));
            all.add(parts.back());
        }
        if (all.mayBeKept())
            return all;
        for (int i = 0; i < group.getNumChildren(); ++i)
            if (Content const& part = parts[static_cast<std::size_t>(i)]; part.mayBeKept())
                keep(*group.getChild(i), part);
        auto* const separator = const_cast<SoSeparator*>(as<SoSeparator>(group));
        if (separator != nullptr && all.shapes > 0)
            separator->renderCaching = SoSeparator::OFF;
        return all;
    }

    std::unordered_set<SoNode const*> const& changing;
    std::unordered_map<SoNode const*, Content> contents; ///< Of those that are asked for again.
};

} // namespace

void FltSceneCaching::arrange(SoSeparator& root, std::unordered_set<SoNode const*> const& changing)
{
    Arrangement arrangement(changing);
    if (Content const all = arrangement.arrange(root); all.mayBeKept())
        arrangement.keep(root, all);
}
