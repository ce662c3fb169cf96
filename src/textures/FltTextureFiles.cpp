#include "textures/FltTextureFiles.h"

#include "textures/FltTextureAttributeFile.h"

#include <filesystem>

namespace
{

constexpr char const* adviceOnSize = "Allow larger files, or save it smaller.";

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

FltTextureFiles::FltTextureFiles(std::string const& database, std::vector<std::string> directories,
                                 std::optional<std::string> namesFrom, FltReadableTree readable,
                                 std::uint64_t largestFile)
    : databaseDirectory(directoryOf(database)), search(std::move(directories), std::move(readable)),
      namesFrom(std::move(namesFrom)), largestFile(largestFile)
{
}

FltTexture const& FltTextureFiles::resolve(std::string const& name, std::string const& database,
                                           OnPicture const& onPicture)
{
    std::pair<std::string, std::string> key(name, database);
    auto known = textures.find(key);
    if (known == textures.end())
        known = textures.emplace(std::move(key), look(name, database, onPicture)).first;
    return known->second;
}

FltTexture FltTextureFiles::look(std::string const& name, std::string const& database,
                                 OnPicture const& onPicture)
{
    FltTexture texture;
    texture.name = name;
    texture.database = database;
    texture.written = name;
    auto const isRead = [&](std::string const& path, OpenFile const& file) {
        if (onPicture)
            onPicture(path);
        Picture const& picture = pictureOf(path, file);
        texture.pixels = picture.pixels;
        if (texture.pixels != nullptr) {
            texture.damage = picture.damage;
        } else if (texture.unreadable.empty()) {
            texture.unreadable = path;
            texture.problem = picture.problem;
            bool const isTooLarge = file.size() > largestFile;
            texture.advice = isTooLarge ? adviceOnSize : Picture::advice;
        }
        return texture.pixels != nullptr;
    };
    std::vector<std::string> const directories = {databaseDirectory, directoryOf(database)};
    FltTextureSearch::Result result = search.find(name, directories, isRead);
    texture.path = std::move(result.path);
    texture.tried = std::move(result.tried);
    texture.otherDirectories = result.otherDirectories;
    texture.attributes = FltTextureAttributeFile::find(search, name, texture.path, directories);
    if (texture.pixels == nullptr)
        return texture;
    texture.unreadable.clear();
    texture.problem.clear();
    texture.advice = texture.damage.empty() ? "" : Picture::advice;
    texture.written = namesFrom ? relativeName(texture.path, *namesFrom) : texture.path;
    return texture;
}

Picture const& FltTextureFiles::pictureOf(std::string const& path, OpenFile const& file)
{
    static Picture const none;
    std::optional<OpenFile::Identity> const identity = file.identity();
    if (!identity)
        return none;
    auto const [known, isNew] = pictures.try_emplace(*identity);
    if (isNew && file.size() > largestFile)
        known->second.problem = "has " + std::to_string(file.size()) + " bytes, more than are allowed";
    else if (isNew)
        known->second = Picture::read(file.descriptor(), path);
    return known->second;
}
