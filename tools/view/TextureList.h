#pragma once

#include <string>
#include <vector>

class SoNode;
class SoTexture2;

/// The textures of a scene by their names, and where to find those that are missing.
class TextureList
{
public:
    struct Texture {
        std::string name;               ///< As the scene's nodes have it.
        std::vector<SoTexture2*> nodes; ///< That show it. They belong to the scene.
        int width = 0;                  ///< Pixels; 0 if the image is missing.
        int height = 0;

        bool isMissing() const { return width == 0 || height == 0; }
    };

    /// An empty list.
    TextureList() = default;
    explicit TextureList(SoNode* scene);

    /// In the order of the scene.
    std::vector<Texture> const& textures() const { return list; }
    int missingCount() const;

    /// Gives a texture an image from a file. @return whether that could be read
    bool setImage(std::size_t index, std::string const& path);

    /// Looks for the missing textures in a directory, by the last part of their names, in letters of any
    /// case.
    /// @return how many were found
    int findIn(std::string const& directory);

private:
    std::vector<Texture> list;
};
