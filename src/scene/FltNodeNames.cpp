#include "scene/FltNodeNames.h"

#include "toolkit/SoNodeName.h"

#include <Inventor/SbName.h>
#include <algorithm>
#include <unordered_map>

void FltNodeNames::add(SoNode* node, std::string_view name)
{
    if (name.empty())
        return;
    names.push_back({SoNodeRef<SoNode>(node), text.size()});
    text += SoNodeName::of(name);
    text += '\0';
}

/// Forgets the nodes that share their name with others.
void FltNodeNames::keepUnique()
{
    std::unordered_map<std::string_view, int> counts;
    counts.reserve(names.size());
    for (Name const& each : names)
        ++counts[text.data() + each.begin];
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&](Name const& each) { return counts[text.data() + each.begin] > 1; }),
                names.end());
}

void FltNodeNames::give(FltVisualOptions::Names wanted)
{
    if (wanted == FltVisualOptions::Names::none)
        names.clear();
    if (wanted == FltVisualOptions::Names::unique)
        keepUnique();
    for (Name const& each : names)
        each.node->setName(text.data() + each.begin);
    *this = {};
}
