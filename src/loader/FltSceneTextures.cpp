#include "loader/FltSceneTextures.h"

#include <algorithm>

namespace
{

void show(SoSharedTexture& node, FltTexture const& texture)
{
    if (texture.pixels == nullptr)
        return;
    node.setPixels(texture.pixels);
    node.setFileName(texture.written);
}

} // namespace

SoNodeRef<SoTexture2> FltSceneTextures::make(std::string const& name, std::string const& database)
{
    SoNodeRef<SoSharedTexture> const node(new SoSharedTexture);
    node->setFileName(name);
    auto const [known, isNew] = positions.try_emplace({name, database}, textures.size());
    if (isNew)
        textures.push_back({name, database, {}});
    textures[known->second].nodes.push_back(node);
    return SoNodeRef<SoTexture2>(node.get());
}

std::vector<FltTexture> FltSceneTextures::resolve(FltTextureFiles::OnPicture const& onPicture)
{
    std::vector<FltTexture> found;
    for (Made& made : textures) {
        auto const isUnused = [](SoNodeRef<SoSharedTexture> const& node) { return node->getRefCount() == 1; };
        made.nodes.erase(std::remove_if(made.nodes.begin(), made.nodes.end(), isUnused), made.nodes.end());
        if (made.nodes.empty() || made.name.empty())
            continue;
        found.push_back(files.resolve(made.name, made.database, onPicture));
        for (SoNodeRef<SoSharedTexture> const& node : made.nodes)
            show(*node, found.back());
    }
    textures.clear();
    positions.clear();
    return found;
}
