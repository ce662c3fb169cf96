#pragma once

#include "textures/FltTextureFiles.h"
#include "toolkit/SoNodeRef.h"
#include "toolkit/SoSharedTexture.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// The nodes of the textures of a scene. While it is built each gets only the name that the database has for
/// it; when it stands, the pictures of those that are in it are looked for.
class FltSceneTextures
{
public:
    /// @param files have to outlive this object
    explicit FltSceneTextures(FltTextureFiles& files) : files(files) {}

    /// A new node. It belongs to the scene if anybody else holds it when resolve() is called.
    /// @param name     as stored
    /// @param database the file that names it
    SoNodeRef<SoTexture2> make(std::string const& name, std::string const& database);

    /// Gives each node the pixels and the name of its picture. One whose picture isn't found keeps its name.
    /// @return each texture of the scene once, in the order in which they were made
    std::vector<FltTexture> resolve(FltTextureFiles::OnPicture const& onPicture);

private:
    struct Made {
        std::string name;
        std::string database;
        std::vector<SoNodeRef<SoSharedTexture>> nodes;
    };

    FltTextureFiles& files;
    std::vector<Made> textures;
    std::map<std::pair<std::string, std::string>, std::size_t> positions; ///< By name and database.
};
