#pragma once

#include "gltf/GltfDocument.h"
#include "gltf/GltfPicture.h"
#include "textures/FltTexture.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// The textures of a glTF file, each once.
class FltGltfTextures
{
public:
    /// Puts a picture somewhere, and says where that is.
    /// @param name the last part of the stored texture's name
    /// @return the address of the picture for the file, or an empty one for it to be in the file
    using Place = std::function<std::string(GltfPicture const& picture, std::string const& name)>;

    /// @param textures that meshes name. All have to outlive this object.
    FltGltfTextures(GltfDocument& document, std::vector<FltTexture> const& textures,
                    GltfPicture::Source const& source, Place place)
        : document(document), textures(textures), source(source), place(std::move(place))
    {
    }

    static constexpr int none = -1;

    /// The number of a texture in the file, by its number in the list.
    /// @param isOpaque whether its alpha mustn't count
    /// @return none if there is no picture
    int numberOf(std::int32_t texture, bool isOpaque);

    FltTexture const& operator[](std::int32_t texture) const
    {
        return textures[static_cast<std::size_t>(texture)];
    }

    /// As stored, each once, in alphabetical order.
    std::vector<std::string> missing() const;

private:
    int imageOf(FltTexture const& texture, bool isOpaque);
    int samplerOf(FltTextureAttributes const& attributes);

    GltfDocument& document;
    std::vector<FltTexture> const& textures;
    GltfPicture::Source const& source;
    Place place;
    std::map<std::pair<PicturePixels const*, bool>, int> images;
    std::map<std::string, int> samplers;        ///< By their texts.
    std::map<std::pair<int, int>, int> numbers; ///< By image and sampler.
    std::map<std::string, bool> missingNames;
};
