#include "visual/FltFileTextures.h"

std::int32_t FltFileTextures::layersNumber(std::vector<Layer> const& layers)
{
    std::string key;
    for (Layer const& layer : layers)
        key += std::to_string(layer.number) + ' ' + std::to_string(layer.texture) + ' ';
    auto const [place, isNew] = layerNumbers.emplace(key, static_cast<std::int32_t>(layerLists.size()));
    if (isNew)
        layerLists.push_back(layers);
    return place->second;
}

void FltFileTextures::nameThem(FltMesh& mesh, FltAppearance const& appearance)
{
    if (appearance.texture != FltAppearance::none)
        mesh.texture = numberOf(appearance.texture);
    if (appearance.layers == FltAppearance::none)
        return;
    std::vector<Layer> const& layers = layerLists[static_cast<std::size_t>(appearance.layers)];
    mesh.layers.resize(layers.size());
    for (std::size_t i = 0; i < layers.size(); ++i) {
        mesh.layers[i].number = layers[i].number;
        mesh.layers[i].texture = numberOf(layers[i].texture);
    }
}

std::int32_t FltFileTextures::numberOf(std::int32_t index)
{
    auto const [known, isNew] = numbers.try_emplace(index, static_cast<std::int32_t>(list.size()));
    if (isNew) {
        FltTextureNames const& palette = *palettes.textures;
        FltTexture texture;
        texture.name = palette.names.at(index);
        texture.database = palette.file;
        texture.written = texture.name;
        list.push_back(std::move(texture));
    }
    return known->second;
}
