#include "support/SceneOutline.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoTexture2.h>

namespace
{

std::string listOf(SoMFInt32 const& field)
{
    std::string text;
    for (int i = 0; i < field.getNum(); ++i)
        text += ' ' + std::to_string(field[i]);
    return text;
}

void outline(SoNode* node, std::string const& indent, std::string& text)
{
    text += indent + node->getTypeId().getName().getString();
    if (node->getName().getLength() > 0)
        text += std::string(" ") + node->getName().getString();
    if (node->isOfType(SoIndexedFaceSet::getClassTypeId())) {
        auto const& faceSet = static_cast<SoIndexedFaceSet const&>(*node);
        text += ':' + listOf(faceSet.coordIndex);
        if (!faceSet.materialIndex.isDefault())
            text += " |" + listOf(faceSet.materialIndex);
    }
    if (node->isOfType(SoTexture2::getClassTypeId()))
        text += std::string(" ") + static_cast<SoTexture2 const*>(node)->filename.getValue().getString();
    text += '\n';
    if (!node->isOfType(SoGroup::getClassTypeId()))
        return;
    auto const* const group = static_cast<SoGroup const*>(node);
    for (int i = 0; i < group->getNumChildren(); ++i)
        outline(group->getChild(i), indent + "  ", text);
}

} // namespace

std::string sceneOutline(SoNode* node)
{
    std::string text;
    if (node == nullptr)
        return "null\n";
    outline(node, "", text);
    return text;
}
