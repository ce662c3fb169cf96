#pragma once

#include "textures/FltTextureSearch.h"
#include "textures/Picture.h"
#include "toolkit/SoNodeRef.h"
#include "toolkit/SoSharedTexture.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The textures of a scene. While it is built each node gets only the name that the database has for it; when
/// it stands, the images of those that are in it are looked for. Each image is read once, and its pixels are
/// shared.
class FltSceneTextures
{
public:
    /// @param database    the top-level file
    /// @param directories to search besides those of the databases
    /// @param namesFrom   a directory from which the nodes shall name the images that are found; without one
    ///                    they get the paths as they were found
    /// @param readable    no other image is read
    FltSceneTextures(std::string const& database, std::vector<std::string> directories,
                     std::optional<std::string> namesFrom = std::nullopt,
                     FltReadableTree readable = FltReadableTree());

    /// A new node. It belongs to the scene if anybody else holds it when resolve() is called.
    /// @param name     as stored
    /// @param database the file that names it
    SoNodeRef<SoTexture2> make(std::string const& name, std::string const& database);

    /// A texture of the scene.
    struct Texture {
        std::string name;
        std::string database;
        std::string path;               ///< Where it was found; empty if it wasn't.
        std::vector<std::string> tried; ///< Otherwise: places where it was looked for.
        std::string unreadable; ///< Otherwise: a file that is there, but is no image that can be read.
        std::string problem;    ///< Then: the end of a sentence about it.
    };

    /// Looks for the images, and gives each node the path of its own and the pixels. One that isn't found
    /// keeps its name.
    /// @param onImage called before an image is read
    /// @return each texture once, in the order in which they were made
    std::vector<Texture> resolve(std::function<void(std::string const& path)> const& onImage);

private:
    struct Made {
        std::string name;
        std::string database;
        std::vector<SoNodeRef<SoSharedTexture>> nodes;
    };

    Texture resolveOne(Made const& made, std::function<void(std::string const& path)> const& onImage);
    Picture const& pictureOf(std::string const& path, OpenFile const& file);

    std::string databaseDirectory;
    FltTextureSearch search;
    std::optional<std::string> namesFrom;
    std::vector<Made> textures;
    std::map<std::pair<std::string, std::string>, std::size_t> positions; ///< By name and database.
    std::map<OpenFile::Identity, Picture> pictures;
};
