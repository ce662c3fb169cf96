#include "view/Visibility.h"

#include <Inventor/SbName.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSwitch.h>

namespace
{

SbName ownName()
{
    return "fltview_visibility";
}

SoNode* storedChild(SoNode* parent, int index)
{
    SoChildList const* const children = parent->getChildren();
    return children != nullptr && index >= 0 && index < children->getLength() ? (*children)[index] : nullptr;
}

SoSwitch* ownSwitch(SoNode* node)
{
    return Visibility::isOwnSwitch(node) ? static_cast<SoSwitch*>(node) : nullptr;
}

} // namespace

bool Visibility::isOwnSwitch(SoNode const* node)
{
    return node != nullptr && node->isOfType(SoSwitch::getClassTypeId()) && node->getName() == ownName();
}

bool Visibility::isHidden(SoNode* parent, int index)
{
    SoSwitch const* const own = ownSwitch(storedChild(parent, index));
    return own != nullptr && own->whichChild.getValue() == SO_SWITCH_NONE;
}

void Visibility::setHidden(SoNode* parent, int index, bool isHidden)
{
    SoNode* const node = storedChild(parent, index);
    if (node == nullptr || !parent->isOfType(SoGroup::getClassTypeId()))
        return;
    SoSwitch* own = ownSwitch(node);
    if (own == nullptr) {
        if (!isHidden)
            return;
        own = new SoSwitch;
        own->setName(ownName());
        own->addChild(node);
        static_cast<SoGroup*>(parent)->replaceChild(index, own);
    }
    own->whichChild = isHidden ? SO_SWITCH_NONE : SO_SWITCH_ALL;
}

SoNode* Visibility::child(SoNode* parent, int index)
{
    SoNode* const node = storedChild(parent, index);
    SoSwitch* const own = ownSwitch(node);
    return own != nullptr ? own->getChild(0) : node;
}
