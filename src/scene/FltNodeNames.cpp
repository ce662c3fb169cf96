#include "scene/FltNodeNames.h"

#include "toolkit/SoNodeName.h"

#include <Inventor/SbName.h>

void FltNodeNames::add(SoNode* node, std::string_view name)
{
    if (name.empty())
        return;
    names.push_back({SoNodeRef<SoNode>(node), text.size()});
    text += SoNodeName::of(name);
    text += '\0';
}

void FltNodeNames::give()
{
    for (Name const& each : names)
        each.node->setName(text.data() + each.begin);
    *this = {};
}
