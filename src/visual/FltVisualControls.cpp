#include "visual/FltVisualControls.h"

#include <algorithm>
#include <unordered_set>

namespace
{

template <class Part>
void addIfIs(FltVisualNode const& node, std::vector<Part const*>& parts)
{
    if (auto const* const part = node.as<Part>())
        parts.push_back(part);
}

template <class Part>
void sortByNumber(std::vector<Part const*>& parts)
{
    std::sort(parts.begin(), parts.end(),
              [](Part const* left, Part const* right) { return left->number < right->number; });
}

} // namespace

FltVisualControls::FltVisualControls(FltVisualNode const& root)
{
    std::vector<FltVisualNode const*> waiting = {&root};
    std::unordered_set<FltVisualNode const*> shared;
    while (!waiting.empty()) {
        FltVisualNode const& node = *waiting.back();
        waiting.pop_back();
        addIfIs(node, switches);
        addIfIs(node, joints);
        addIfIs(node, flipBooks);
        for (std::shared_ptr<FltVisualNode> const& child : node.children)
            if (child != nullptr && (child.use_count() == 1 || shared.insert(child.get()).second))
                waiting.push_back(child.get());
    }
    sortByNumber(switches);
    sortByNumber(joints);
    sortByNumber(flipBooks);
}
