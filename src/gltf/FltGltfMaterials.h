#pragma once

#include "gltf/FltGltfLosses.h"
#include "gltf/FltGltfTextures.h"
#include "gltf/GltfDocument.h"
#include "visual/FltMesh.h"

#include <string>
#include <unordered_map>

/// The materials of a glTF file, each once.
class FltGltfMaterials
{
public:
    /// All have to outlive this object.
    FltGltfMaterials(GltfDocument& document, FltGltfTextures& textures, FltGltfLosses& losses)
        : document(document), textures(textures), losses(losses)
    {
    }

    /// The material of a mesh.
    struct Number {
        int material;
        bool hasTexture; ///< Whether coordinates of the first texture are needed.
    };
    Number numberOf(FltMesh const& mesh);

private:
    int textureOf(FltMesh const& mesh);
    void tellWhatIsLost(FltMesh const& mesh, bool hasTexture);

    GltfDocument& document;
    FltGltfTextures& textures;
    FltGltfLosses& losses;
    std::unordered_map<std::string, int> numbers; ///< By their texts.
};
