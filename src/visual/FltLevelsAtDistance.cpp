#include "visual/FltLevelsAtDistance.h"

#include "visual/FltNodeCopy.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <unordered_set>

namespace
{

using Node = FltLevelsAtDistance::Node;

/// The number of the level that is drawn at a distance.
std::size_t levelAt(FltVisualNode const& node, double distance)
{
    auto const isThere = [](Node const& level) { return level != nullptr; };
    std::vector<double> const& distances = node.as<FltVisualLevels>()->distances;
    if (distance == 0)
        return static_cast<std::size_t>(std::find_if(node.children.begin(), node.children.end(), isThere) -
                                        node.children.begin());
    return static_cast<std::size_t>(std::count_if(distances.begin(), distances.end(),
                                                  [distance](double each) { return each <= distance; }));
}

} // namespace

std::vector<double> FltLevelsAtDistance::changesOf(FltVisualNode const& root)
{
    std::vector<double> distances;
    std::vector<FltVisualNode const*> open = {&root};
    std::unordered_set<FltVisualNode const*> seen = {&root};
    while (!open.empty()) {
        FltVisualNode const& node = *open.back();
        open.pop_back();
        if (auto const* const levels = node.as<FltVisualLevels>()) {
            std::copy_if(levels->distances.begin(), levels->distances.end(), std::back_inserter(distances),
                         [](double distance) { return distance > 0 && std::isfinite(distance); });
            continue;
        }
        for (Node const& child : node.children)
            if (child != nullptr && !child->isHidden && seen.insert(child.get()).second)
                open.push_back(child.get());
    }
    std::sort(distances.begin(), distances.end());
    distances.erase(std::unique(distances.begin(), distances.end()), distances.end());
    return distances;
}

Node FltLevelsAtDistance::at(Node const& root, double newDistance)
{
    distance = newDistance;
    known.clear();
    return chosen(root);
}

bool FltLevelsAtDistance::hasLevels(FltVisualNode const& node)
{
    if (auto const found = levelsBelow.find(&node); found != levelsBelow.end())
        return found->second;
    bool const has = node.as<FltVisualLevels>() != nullptr ||
                     std::any_of(node.children.begin(), node.children.end(),
                                 [this](Node const& child) { return child != nullptr && hasLevels(*child); });
    return levelsBelow[&node] = has;
}

Node FltLevelsAtDistance::chosen(Node const& node)
{
    if (node == nullptr || !hasLevels(*node))
        return node;
    if (auto const found = known.find(node.get()); found != known.end())
        return found->second;
    Node made = FltNodeCopy::namedLike(*node);
    made->transform = node->transform;
    made->senses = node->senses;
    made->meshes = node->meshes;
    if (auto const* const levels = node->as<FltVisualLevels>()) {
        std::size_t const first = levelAt(*node, distance);
        std::size_t const end = std::min(levels->endOfDrawn(first), node->children.size());
        for (std::size_t i = end; i > first; --i)
            if (node->children[i - 1] != nullptr)
                made->children.push_back(chosen(node->children[i - 1]));
    } else {
        FltNodeCopy::takeContent<FltVisualLevel, FltVisualSwitch, FltVisualJoint, FltVisualCopies,
                                 FltVisualTurning, FltVisualScale, FltVisualLight, FltVisualText,
                                 FltVisualFile, FltVisualFlipBook>(*node, *made);
        for (Node const& child : node->children)
            made->children.push_back(chosen(child));
    }
    return known[node.get()] = made;
}
