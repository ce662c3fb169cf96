#include "iv/FileReferences.h"

#include "iv/FileIdentity.h"
#include "support/SceneNodes.h"

#include "toolkit/SoSilentField.h"

#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoWWWInline.h>
#include <filesystem>
#include <utility>

namespace
{

/// A node with a name that has the toolkit open no file.
template <class Node>
Node* named(std::string const& name)
{
    auto* const node = new Node;
    SoSilentField::set(node->name, name.c_str());
    return node;
}

} // namespace

FileReferences::FileReferences(std::unordered_map<std::string, std::string> targets, std::string directory,
                               bool isVrml)
    : targets(std::move(targets)), directory(std::move(directory)), isVrml(isVrml)
{
}

/// What stands for a database in the written scene; null if nothing may.
SoNode* FileReferences::replacement(std::string const& database) const
{
    auto const target = targets.find(FileIdentity::of(database));
    if (target == targets.end())
        return nullptr;
    std::filesystem::path const from = directory.empty() ? "." : directory;
    std::string const name = std::filesystem::path(target->second).lexically_proximate(from).string();
    return isVrml ? static_cast<SoNode*>(named<SoWWWInline>(name)) : named<SoFile>(name);
}

std::size_t FileReferences::rename(SoNode* root) const
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
            SoNode* const other = replacement(file.name.getValue().getString());
            takenOut += other == nullptr ? 1 : 0;
            group.replaceChild(i, other != nullptr ? other : new SoGroup);
        }
    });
    return takenOut;
}
