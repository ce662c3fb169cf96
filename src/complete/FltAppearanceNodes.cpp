#include "complete/FltAppearanceNodes.h"

#include "toolkit/SoSharedTexture.h"

#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTextureUnit.h>
#include <Inventor/nodes/SoTransparencyType.h>

namespace
{

/// A texture that has its name alone.
SoNodeRef<SoTexture2> named(std::string const& stored)
{
    SoNodeRef<SoTexture2> node(new SoTexture2);
    SoSharedTexture::nameSilently(*node, stored);
    return node;
}

} // namespace

template <class Key, class Make>
SoNode* FltAppearanceNodes::shared(std::map<Key, SoNodeRef<SoNode>>& nodes, Key const& key, Make make)
{
    SoNodeRef<SoNode>& node = nodes[key];
    if (node.get() == nullptr)
        node = SoNodeRef<SoNode>(make());
    return node.get();
}

void FltAppearanceNodes::addTo(FltGroupBuilder& group, FltAppearance const& appearance)
{
    bool const isFaces = appearance.kind == FltAppearance::Kind::faces;
    if (!appearance.isLit)
        group.addProperty(shared(lightModels, 0, [] {
            auto* const node = new SoLightModel;
            node->model = SoLightModel::BASE_COLOR;
            return node;
        }));
    if (isFaces)
        group.addProperty(shared(hints, static_cast<int>(appearance.isTwoSided), [&] {
            auto* const node = new SoShapeHints;
            node->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
            node->shapeType = appearance.isTwoSided ? SoShapeHints::UNKNOWN_SHAPE_TYPE : SoShapeHints::SOLID;
            return node;
        }));
    // Faces that lie on others come nearer to the eye, and lines are always nearer than their faces.
    int const nearness = isFaces ? 2 * appearance.level - (appearance.isOutlined ? 1 : 0) : 0;
    if (nearness != 0)
        group.addProperty(shared(offsets, nearness, [nearness] {
            auto* const node = new SoPolygonOffset;
            node->factor = static_cast<float>(-nearness);
            node->units = static_cast<float>(-nearness);
            return node;
        }));
    if (appearance.isBlended || appearance.ignoresTextureAlpha)
        group.addProperty(shared(blendings, static_cast<int>(appearance.isBlended), [&] {
            auto* const node = new SoTransparencyType;
            node->value =
                appearance.isBlended ? SoTransparencyType::SORTED_OBJECT_BLEND : SoTransparencyType::NONE;
            return node;
        }));
    if (!isFaces && appearance.size > 0)
        group.addProperty(shared(drawStyles, {static_cast<int>(appearance.kind), appearance.size}, [&] {
            auto* const node = new SoDrawStyle;
            if (appearance.kind == FltAppearance::Kind::lines)
                node->lineWidth = appearance.size;
            else
                node->pointSize = appearance.size;
            return node;
        }));
    if (appearance.texture != FltAppearance::none)
        group.addProperty(textureOf(appearance.texture));
    if (appearance.layers != FltAppearance::none)
        addLayers(group, appearance);
}

void FltAppearanceNodes::addLayers(FltGroupBuilder& group, FltAppearance const& appearance)
{
    for (Layer const& layer : getLayers(appearance.layers)) {
        group.addProperty(shared(units, layer.unit, [&] {
            auto* const node = new SoTextureUnit;
            node->unit = layer.unit;
            return node;
        }));
        group.addProperty(textureOf(layer.texture));
    }
    group.addProperty(shared(units, 0, [] { return new SoTextureUnit; }));
}

SoTexture2* FltAppearanceNodes::textureOf(std::int32_t index)
{
    SoNodeRef<SoTexture2>& node = textures[index];
    if (node.get() == nullptr) {
        FltTextureNames const& palette = *palettes.textures;
        std::string const& stored = palette.names.at(index);
        node = makeTexture ? makeTexture(stored, palette.file) : named(stored);
    }
    return node.get();
}

std::int32_t FltAppearanceNodes::numberOf(std::vector<Layer> const& layers)
{
    std::string key;
    for (Layer const& layer : layers)
        key += std::to_string(layer.unit) + ' ' + std::to_string(layer.texture) + ' ';
    auto const [place, isNew] = layerNumbers.emplace(key, static_cast<std::int32_t>(layerLists.size()));
    if (isNew)
        layerLists.push_back(layers);
    return place->second;
}
