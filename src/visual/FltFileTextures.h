#pragma once

#include "model/FltPaletteSet.h"
#include "textures/FltTexture.h"
#include "visual/FltAppearance.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// The textures of a file's palette, and their numbers in the list of a visual, which holds those in use.
class FltFileTextures
{
public:
    /// A further texture of a face.
    struct Layer {
        int number;
        std::int32_t texture; ///< In the palette.
    };

    FltFileTextures(FltPaletteSet const& palettes, std::vector<FltTexture>& list)
        : palettes(palettes), list(list)
    {
    }

    /// Whether the palette has a texture.
    bool has(std::int32_t index) const { return palettes.textures->names.count(index) != 0; }

    /// The number of a list of further textures. Equal lists have the same.
    std::int32_t layersNumber(std::vector<Layer> const& layers);

    /// Gives a mesh the textures of its appearance.
    void nameThem(FltMesh& mesh, FltAppearance const& appearance);

private:
    std::int32_t numberOf(std::int32_t index);

    FltPaletteSet const& palettes;
    std::vector<FltTexture>& list;
    std::map<std::int32_t, std::int32_t> numbers; ///< By the index in the palette.
    std::vector<std::vector<Layer>> layerLists;
    std::map<std::string, std::int32_t> layerNumbers;
};
