#include "iv/FileReferences.h"

#include "support/SceneNodes.h"

#include "toolkit/SoSilentField.h"

#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoGroup.h>
#include <optional>
#include <string>

namespace
{

/// A node with a name that has the toolkit open no file.
SoNode* fileNode(std::string const& name)
{
    auto* const node = new SoFile;
    SoSilentField::set(node->name, name.c_str());
    return node;
}

} // namespace

std::size_t FileReferences::rename(SoNode* root, ReferenceNames const& names)
{
    std::size_t takenOut = 0;
    SceneNodes::forEach(root, [&](SoNode& node) {
        if (!node.isOfType(SoGroup::getClassTypeId()))
            return;
        auto& group = static_cast<SoGroup&>(node);
        for (int i = 0; i < group.getNumChildren(); ++i) {
            if (!group.getChild(i)->isOfType(SoFile::getClassTypeId()))
                continue;
            auto const& file = static_cast<SoFile&>(*group.getChild(i));
            std::optional<std::string> const name = names.nameOf(file.name.getValue().getString());
            takenOut += name ? 0 : 1;
            group.replaceChild(i, name ? fileNode(*name) : static_cast<SoNode*>(new SoGroup));
        }
    });
    return takenOut;
}
