#pragma once

#include "gltf/GltfPicture.h"
#include "loader/FltVisual.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class WholeFile;

/// The files that a glTF file is made of when it isn't all in one. None takes its place before all are
/// written, and none takes the place of a file of the database.
class FltGltfFiles
{
public:
    /// @param path             of the main file
    /// @param textureDirectory as FltGltfOptions::textureDirectory; empty for one beside the main file
    FltGltfFiles(FltVisual const& visual, std::string path, std::string textureDirectory);
    ~FltGltfFiles();
    FltGltfFiles(FltGltfFiles const&) = delete;
    FltGltfFiles& operator=(FltGltfFiles const&) = delete;

    /// Writes a picture. @return its path, as seen from the main file
    /// @param name the last part of the stored texture's name
    /// @throw FltGltfError
    std::string add(GltfPicture const& picture, std::string const& name);

    /// Gives pieces of a file.
    using Pieces = std::function<void(std::function<void(std::string_view piece)> const& take)>;

    /// Writes a file.
    /// @throw FltGltfError
    void add(std::string const& path, Pieces const& pieces);

    /// Gives all files their places, in the order in which they were added.
    /// @return their names
    /// @throw FltGltfError
    std::vector<std::string> commit();

    /// A path as an address: what has a meaning in addresses is written as numbers.
    static std::string addressOf(std::string_view path);

    std::string binaryPath() const; ///< Of the binary part: beside the main file.

private:
    void checkIsNotOfDatabase(std::string const& path) const;
    std::string freeName(GltfPicture const& picture, std::string const& name);
    std::string sharedName(GltfPicture const& picture) const;

    FltVisual const& visual;
    std::string path;
    std::string folder; ///< Of the pictures, with a slash at its end.
    bool isShared;
    std::set<std::string> names;
    std::vector<std::pair<std::string, std::unique_ptr<WholeFile>>> files;
    std::vector<std::string> present; ///< Pictures that stood there already.
};
