#pragma once

#include "textures/FltTexture.h"
#include "textures/FltTextureSearch.h"
#include "textures/Picture.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The pictures of the textures that databases name. Each is looked for once, and each file is decoded once,
/// whatever names lead to it.
///
/// The toolkit needn't be started. Where it isn't, its search directories aren't looked into.
class FltTextureFiles
{
public:
    /// Called before a picture is read.
    using OnPicture = std::function<void(std::string const& path)>;

    /// @param database    the top-level file
    /// @param directories to search besides those of the databases
    /// @param namesFrom   a directory from which the pictures that are found shall be named; without one they
    ///                    are named by their paths as they were found
    /// @param readable    no other picture is read
    /// @param largestFile in bytes; larger pictures aren't read
    explicit FltTextureFiles(std::string const& database, std::vector<std::string> directories = {},
                             std::optional<std::string> namesFrom = std::nullopt,
                             FltReadableTree readable = FltReadableTree(),
                             std::uint64_t largestFile = UINT64_MAX);

    /// What is known of a texture. A picture of another format is taken where the stored one can't be read.
    /// @param name      as stored
    /// @param database  the file that names it
    /// @param onPicture not called where the texture was asked for before
    /// @return lives as long as this object
    FltTexture const& resolve(std::string const& name, std::string const& database,
                              OnPicture const& onPicture = {});

private:
    FltTexture look(std::string const& name, std::string const& database, OnPicture const& onPicture);
    Picture const& pictureOf(std::string const& path, OpenFile const& file);

    std::string databaseDirectory;
    FltTextureSearch search;
    std::optional<std::string> namesFrom;
    std::uint64_t largestFile;
    std::map<std::pair<std::string, std::string>, FltTexture> textures; ///< By name and database.
    std::map<OpenFile::Identity, Picture> pictures;
};
