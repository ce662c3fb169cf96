#include "complete/FltNodeNames.h"

#include "toolkit/SoNodeName.h"

#include <Inventor/SbName.h>
#include <algorithm>
#include <utility>

void FltNodeNames::add(SoNode* node, std::string_view name)
{
    if (name.empty())
        return;
    if (names.size() >= mostNames) {
        dropLeftOut();
        mostNames = std::max(mostNames, 2 * names.size());
    }
    names.push_back({SoNodeRef<SoNode>(node), text.size()});
    text += SoNodeName::of(name);
    text += '\0';
}

void FltNodeNames::give()
{
    dropLeftOut();
    for (Name const& each : names)
        each.node->setName(text.data() + each.begin);
    *this = {};
}

/// A node stands before those below it, so that these go with it.
void FltNodeNames::dropLeftOut()
{
    std::size_t kept = 0;
    std::size_t end = 0;
    for (Name& each : names) {
        if (each.node->getRefCount() == 1) {
            each.node = {};
            continue;
        }
        std::size_t const size = std::string_view(text.data() + each.begin).size() + 1;
        std::copy_n(text.begin() + static_cast<std::ptrdiff_t>(each.begin), size,
                    text.begin() + static_cast<std::ptrdiff_t>(end));
        names[kept++] = {std::move(each.node), end};
        end += size;
    }
    names.erase(names.begin() + static_cast<std::ptrdiff_t>(kept), names.end());
    text.resize(end);
}
