#pragma once

#include "textures/FltTexture.h"
#include "toolkit/SoNodeRef.h"
#include "visual/FltMesh.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoTexture2.h>
#include <array>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

/// Makes the nodes of how meshes look, each once for all meshes that have it in common.
class FltAppearanceNodes
{
public:
    /// @param textures that meshes name. They have to outlive this object.
    explicit FltAppearanceNodes(std::vector<FltTexture> const& textures) : textures(textures) {}

    /// Adds all nodes of a mesh's appearance but its material.
    /// @param isMirrored whether it stands in an odd number of mirrors
    void addTo(SoGroup& group, FltMesh const& mesh, bool isMirrored = false);

    /// The material of a mesh, with its colour if all corners have one.
    SoNode* materialOf(FltMesh const& mesh);

private:
    /// The bits of a material's fields.
    using MaterialKey = std::array<std::uint32_t, 12>;

    void addTransparency(SoGroup& group, FltMesh const& mesh);
    float qualityOf(std::int32_t cutOut);
    SoTexture2* textureOf(std::int32_t number, bool isCutOut);
    void addLayers(SoGroup& group, FltMesh const& mesh);

    std::vector<FltTexture> const& textures;
    std::map<std::pair<std::int32_t, bool>, SoNodeRef<SoTexture2>> textureNodes; ///< Those of cut-outs too.
    std::map<int, SoNodeRef<SoNode>> offsets;
    std::map<std::pair<bool, bool>, SoNodeRef<SoNode>> hints;
    std::map<int, SoNodeRef<SoNode>> blendings;
    std::map<int, SoNodeRef<SoNode>> alphaTests;
    std::map<float, SoNodeRef<SoNode>> qualities;
    std::map<std::int32_t, float> qualitiesOfTextures;
    std::map<int, SoNodeRef<SoNode>> lightModels;
    std::map<MaterialKey, SoNodeRef<SoNode>> materials;
    std::map<int, SoNodeRef<SoNode>> units;
    std::map<std::pair<FltMesh::Kind, float>, SoNodeRef<SoNode>> drawStyles;
};
