#include "loader/FltSceneTextures.h"

#include <algorithm>
#include <filesystem>

namespace
{

std::string directoryOf(std::string const& file)
{
    return file.substr(0, file.rfind('/') + 1);
}

/// The name of a file as seen from a directory.
std::string relativeName(std::string const& path, std::string const& directory)
{
    std::error_code problem;
    std::filesystem::path const name =
        std::filesystem::proximate(path, directory.empty() ? "." : directory, problem);
    return problem || name.empty() ? path : name.string();
}

} // namespace

FltSceneTextures::FltSceneTextures(std::string const& database, std::vector<std::string> directories,
                                   std::optional<std::string> namesFrom, FltReadableTree readable)
    : databaseDirectory(directoryOf(database)), search(std::move(directories), std::move(readable)),
      namesFrom(std::move(namesFrom))
{
}

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

std::vector<FltSceneTextures::Texture>
FltSceneTextures::resolve(std::function<void(std::string const& path)> const& onImage)
{
    std::vector<Texture> found;
    for (Made& made : textures) {
        auto const isUnused = [](SoNodeRef<SoSharedTexture> const& node) { return node->getRefCount() == 1; };
        made.nodes.erase(std::remove_if(made.nodes.begin(), made.nodes.end(), isUnused), made.nodes.end());
        if (!made.nodes.empty() && !made.name.empty())
            found.push_back(resolveOne(made, onImage));
    }
    textures.clear();
    positions.clear();
    return found;
}

FltSceneTextures::Texture
FltSceneTextures::resolveOne(Made const& made, std::function<void(std::string const& path)> const& onImage)
{
    Texture texture{made.name, made.database, {}, {}, {}, {}};
    std::shared_ptr<PicturePixels const> pixels;
    FltTextureSearch::Result result = search.find(made.name, {databaseDirectory, directoryOf(made.database)},
                                                  [&](std::string const& path, OpenFile const& file) {
                                                      onImage(path);
                                                      Picture const& picture = pictureOf(path, file);
                                                      pixels = picture.pixels;
                                                      if (pixels == nullptr && texture.unreadable.empty()) {
                                                          texture.unreadable = path;
                                                          texture.problem = picture.problem;
                                                      }
                                                      return pixels != nullptr;
                                                  });
    texture.path = std::move(result.path);
    texture.tried = std::move(result.tried);
    if (pixels == nullptr)
        return texture;
    texture.unreadable.clear();
    texture.problem.clear();
    std::string const name = namesFrom ? relativeName(texture.path, *namesFrom) : texture.path;
    for (SoNodeRef<SoSharedTexture> const& node : made.nodes) {
        node->setPixels(pixels);
        node->setFileName(name);
    }
    return texture;
}

Picture const& FltSceneTextures::pictureOf(std::string const& path, OpenFile const& file)
{
    static Picture const none;
    std::optional<OpenFile::Identity> const identity = file.identity();
    if (!identity)
        return none;
    auto const [known, isNew] = pictures.try_emplace(*identity);
    if (isNew)
        known->second = Picture::read(file.descriptor(), path);
    return known->second;
}
