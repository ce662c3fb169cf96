#include "scene/FltAppearanceNodes.h"

#include "toolkit/SoSharedTexture.h"

#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTextureUnit.h>
#include <Inventor/nodes/SoTransparencyType.h>

namespace
{

/// The node for a key, which is made for the first one who asks.
template <class Key, class Make>
SoNode* shared(std::map<Key, SoNodeRef<SoNode>>& nodes, Key const& key, Make make)
{
    SoNodeRef<SoNode>& node = nodes[key];
    if (node.get() == nullptr)
        node = SoNodeRef<SoNode>(make());
    return node.get();
}

} // namespace

void FltAppearanceNodes::addTo(SoGroup& group, FltMesh const& mesh)
{
    bool const isFaces = mesh.kind == FltMesh::Kind::faces;
    if (!mesh.isLit)
        group.addChild(shared(lightModels, 0, [] {
            auto* const node = new SoLightModel;
            node->model = SoLightModel::BASE_COLOR;
            return node;
        }));
    if (isFaces)
        group.addChild(shared(hints, static_cast<int>(mesh.isTwoSided), [&] {
            auto* const node = new SoShapeHints;
            node->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
            node->shapeType = mesh.isTwoSided ? SoShapeHints::UNKNOWN_SHAPE_TYPE : SoShapeHints::SOLID;
            return node;
        }));
    // Faces that lie on others come nearer to the eye, and lines are always nearer than their faces.
    int const nearness = isFaces ? 2 * mesh.level - (mesh.isOutlined ? 1 : 0) : 0;
    if (nearness != 0)
        group.addChild(shared(offsets, nearness, [nearness] {
            auto* const node = new SoPolygonOffset;
            node->factor = static_cast<float>(-nearness);
            node->units = static_cast<float>(-nearness);
            return node;
        }));
    if (mesh.isBlended || mesh.ignoresTextureAlpha)
        group.addChild(shared(blendings, static_cast<int>(mesh.isBlended), [&] {
            auto* const node = new SoTransparencyType;
            node->value = mesh.isBlended ? SoTransparencyType::SORTED_OBJECT_BLEND : SoTransparencyType::NONE;
            return node;
        }));
    if (!isFaces && mesh.size > 0)
        group.addChild(shared(drawStyles, {mesh.kind, mesh.size}, [&] {
            auto* const node = new SoDrawStyle;
            if (mesh.kind == FltMesh::Kind::lines)
                node->lineWidth = mesh.size;
            else
                node->pointSize = mesh.size;
            return node;
        }));
    if (mesh.texture != FltMesh::none)
        group.addChild(textureOf(mesh.texture));
    if (!mesh.layers.empty())
        addLayers(group, mesh);
}

void FltAppearanceNodes::addLayers(SoGroup& group, FltMesh const& mesh)
{
    for (FltMesh::Layer const& layer : mesh.layers) {
        group.addChild(shared(units, layer.number, [&] {
            auto* const node = new SoTextureUnit;
            node->unit = layer.number;
            return node;
        }));
        group.addChild(textureOf(layer.texture));
    }
    group.addChild(shared(units, 0, [] { return new SoTextureUnit; }));
}

SoTexture2* FltAppearanceNodes::textureOf(std::int32_t number)
{
    SoNodeRef<SoTexture2>& node = textureNodes[number];
    if (node.get() != nullptr)
        return node.get();
    FltTexture const& texture = textures[static_cast<std::size_t>(number)];
    auto* const shown = new SoSharedTexture;
    node = SoNodeRef<SoTexture2>(shown);
    if (texture.pixels != nullptr)
        shown->setPixels(texture.pixels);
    shown->setFileName(texture.written);
    return shown;
}
