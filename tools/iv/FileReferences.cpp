#include "iv/FileReferences.h"

#include "convert/FileIdentity.h"
#include "support/SceneNodes.h"

#include "toolkit/SoSilentField.h"

#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoGroup.h>
#include <filesystem>
#include <utility>

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

FileReferences::FileReferences(std::unordered_map<std::string, std::string> targets, std::string directory)
    : targets(std::move(targets)), directory(std::move(directory))
{
}

std::optional<std::string> FileReferences::nameOf(std::string const& database) const
{
    auto const target = targets.find(FileIdentity::of(database));
    if (target == targets.end())
        return std::nullopt;
    std::filesystem::path const from = directory.empty() ? "." : directory;
    return std::filesystem::path(target->second).lexically_proximate(from).string();
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
            std::optional<std::string> const name = nameOf(file.name.getValue().getString());
            takenOut += name ? 0 : 1;
            group.replaceChild(i, name ? fileNode(*name) : static_cast<SoNode*>(new SoGroup));
        }
    });
    return takenOut;
}
