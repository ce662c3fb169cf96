#include "support/SceneNodes.h"

#include <Inventor/fields/SoSFNode.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoNode.h>
#include <unordered_set>
#include <vector>

namespace
{

/// What a node leads to.
void append(SoNode const& node, std::vector<SoNode*>& list)
{
    if (SoChildList const* const children = node.getChildren())
        for (int i = 0; i < children->getLength(); ++i)
            list.push_back((*children)[i]);
    SoFieldList fields;
    node.getFields(fields);
    for (int i = 0; i < fields.getLength(); ++i)
        if (fields[i]->isOfType(SoSFNode::getClassTypeId()))
            list.push_back(static_cast<SoSFNode const*>(fields[i])->getValue());
}

} // namespace

void SceneNodes::forEach(SoNode* root, std::function<void(SoNode& node)> const& function)
{
    std::unordered_set<SoNode const*> seen;
    std::vector<SoNode*> open{root};
    while (!open.empty()) {
        SoNode* const node = open.back();
        open.pop_back();
        if (node == nullptr || !seen.insert(node).second)
            continue;
        function(*node);
        append(*node, open);
    }
}
