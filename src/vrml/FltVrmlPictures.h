#pragma once

#include "textures/FltTexture.h"
#include "toolkit/VelloReaderExport.h"
#include "visual/FltVisualNode.h"
#include "vrml/VrmlNames.h"
#include "vrml/VrmlText.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A picture that a VRML97 file needs.
struct VELLOREADER_API FltVrmlPicture {
    FltTexture const* texture = nullptr; ///< Of which it is the picture. It may have none.
    bool isOpaque = false; ///< Its transparency doesn't count, so that the file as it is won't do.

    /// The address for readers of the file. Where it is empty, the pixels stand in the file.
    std::string url;

    /// The pixels as they are to be seen; null if the texture has no picture.
    std::shared_ptr<PicturePixels const> pixels() const;
};

/// All pictures that a visual needs in a VRML97 file, each once.
class FltVrmlPictures
{
public:
    /// @param textures that meshes name. They have to outlive this object.
    FltVrmlPictures(FltVisualNode const& root, std::vector<FltTexture> const& textures);

    std::vector<FltVrmlPicture> list; ///< In the order in which meshes name them.

    /// Writes the node for the first texture of a mesh.
    void write(VrmlText& text, VrmlNames& names, FltMesh const& mesh);

    /// Writes a node that has what is drawn let through what is behind it. It stands in for a texture.
    /// @param opacity from 0 to 255
    static void writeOpacity(VrmlText& text, unsigned opacity);

    /// How many components the pixels of a mesh's first texture have; 0 if there is no picture.
    int componentsOf(FltMesh const& mesh) const;

    /// What the colours of a mesh's first texture do.
    FltTextureAttributes::Environment environmentOf(FltMesh const& mesh) const
    {
        return textureOf(mesh).attributes.environment;
    }

private:
    void add(FltMesh const& mesh);
    FltTexture const& textureOf(FltMesh const& mesh) const;
    bool isOpaque(FltMesh const& mesh) const;

    std::vector<FltTexture> const& textures;
    std::map<std::pair<std::string, bool>, std::size_t>
        numbers;                                 ///< In the list, by what the textures are called in files.
    std::map<std::size_t, std::string> embedded; ///< Names of those that are in the file.
};
