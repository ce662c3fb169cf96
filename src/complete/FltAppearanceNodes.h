#pragma once

#include "complete/FltAppearance.h"
#include "complete/FltGroupBuilder.h"
#include "model/FltPaletteSet.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoTexture2.h>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// Makes the nodes of appearances, each once for all shapes that have it in common.
class FltAppearanceNodes
{
public:
    /// Makes the node of a texture for its name as it is stored.
    using MakeTexture =
        std::function<SoNodeRef<SoTexture2>(std::string const& stored, std::string const& referringFile)>;

    /// A further texture of a face.
    struct Layer {
        int unit;
        std::int32_t texture;
    };

    FltAppearanceNodes(FltPaletteSet const& palettes, MakeTexture const& makeTexture)
        : palettes(palettes), makeTexture(makeTexture)
    {
    }

    /// Adds all nodes of an appearance but its material.
    void addTo(FltGroupBuilder& group, FltAppearance const& appearance);

    /// The number of a list of further textures. Equal lists have the same.
    std::int32_t numberOf(std::vector<Layer> const& layers);

    std::vector<Layer> const& getLayers(std::int32_t number) const
    {
        return layerLists[static_cast<std::size_t>(number)];
    }

    /// Whether the palette has a texture.
    bool hasTexture(std::int32_t index) const { return palettes.textures->names.count(index) != 0; }

private:
    SoTexture2* textureOf(std::int32_t index);
    void addLayers(FltGroupBuilder& group, FltAppearance const& appearance);
    template <class Key, class Make>
    SoNode* shared(std::map<Key, SoNodeRef<SoNode>>& nodes, Key const& key, Make make);

    FltPaletteSet const& palettes;
    MakeTexture const& makeTexture;
    std::map<std::int32_t, SoNodeRef<SoTexture2>> textures;
    std::map<int, SoNodeRef<SoNode>> offsets;
    std::map<int, SoNodeRef<SoNode>> hints;
    std::map<int, SoNodeRef<SoNode>> blendings;
    std::map<int, SoNodeRef<SoNode>> lightModels;
    std::map<int, SoNodeRef<SoNode>> units;
    std::map<std::pair<int, float>, SoNodeRef<SoNode>> drawStyles;
    std::vector<std::vector<Layer>> layerLists;
    std::map<std::string, std::int32_t> layerNumbers;
};
