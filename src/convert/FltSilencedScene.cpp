#include "convert/FltSilencedScene.h"

#include <Inventor/nodes/SoNode.h>
#include <algorithm>

FltSilencedScene::Order FltSilencedScene::silence(SoNode* node)
{
    if (node == nullptr)
        return silencedNodes.size();
    node->enableNotify(FALSE);
    silencedNodes.push_back(node);
    return silencedNodes.size() - 1;
}

void FltSilencedScene::noteBox(Order first)
{
    while (!boxedNodes.empty() && boxedNodes.back().begin >= first)
        boxedNodes.pop_back();
    boxedNodes.push_back({first, silencedNodes.size()});
}

void FltSilencedScene::forgetBox(Order order)
{
    auto const found = std::upper_bound(boxedNodes.begin(), boxedNodes.end(), order,
                                        [](Order value, Range const& range) { return value < range.end; });
    if (found == boxedNodes.end() || found->begin > order)
        return;
    for (Order i = found->begin; i < found->end; ++i)
        silencedNodes[i]->touch();
    boxedNodes.erase(found);
}

void FltSilencedScene::end()
{
    for (SoNode* node : silencedNodes) {
        node->touch();
        node->enableNotify(TRUE);
    }
    silencedNodes.clear();
    boxedNodes.clear();
}
