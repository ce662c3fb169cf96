#include "scene/FltAppearanceNodes.h"

#include "textures/PictureAlpha.h"
#include "toolkit/SoSharedTexture.h"

#include <Inventor/nodes/SoAlphaTest.h>
#include <Inventor/nodes/SoComplexity.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTextureUnit.h>
#include <Inventor/nodes/SoTransparencyType.h>
#include <algorithm>
#include <cstring>

namespace
{

/// Below a half the toolkit draws textures without means of many pixels, and from a fifth on smoothly.
constexpr float smoothWithoutMeans = 0.4F, pixelByPixel = 0.1F;

SoTexture2::Wrap wrapOf(FltTextureAttributes::Wrap wrap)
{
    return wrap == FltTextureAttributes::Wrap::clamp ? SoTexture2::CLAMP : SoTexture2::REPEAT;
}

SoTexture2::Model modelOf(FltTextureAttributes::Environment environment)
{
    using Environment = FltTextureAttributes::Environment;
    switch (environment) {
    case Environment::blend:
        return SoTexture2::BLEND;
    case Environment::decal:
        return SoTexture2::DECAL;
    case Environment::replace:
        return SoTexture2::REPLACE;
    case Environment::modulate:
    case Environment::add:
        break;
    }
    return SoTexture2::MODULATE;
}

/// The toolkit has no mirrored textures, which repeat, and none that are added, which modulate.
void setAttributes(SoTexture2& node, FltTextureAttributes const& attributes)
{
    if (SoTexture2::Wrap const wrap = wrapOf(attributes.wrapU); wrap != SoTexture2::REPEAT)
        node.wrapS = wrap;
    if (SoTexture2::Wrap const wrap = wrapOf(attributes.wrapV); wrap != SoTexture2::REPEAT)
        node.wrapT = wrap;
    if (SoTexture2::Model const model = modelOf(attributes.environment); model != SoTexture2::MODULATE)
        node.model = model;
    if (attributes.environment == FltTextureAttributes::Environment::blend)
        node.blendColor.setValue(1, 1, 1);
}

/// The node for a key, which is made for the first one who asks.
template <class Key, class Make>
SoNode* shared(std::map<Key, SoNodeRef<SoNode>>& nodes, Key const& key, Make make)
{
    SoNodeRef<SoNode>& node = nodes[key];
    if (node.get() == nullptr)
        node = SoNodeRef<SoNode>(make());
    return node.get();
}

std::uint32_t colorOf(FltMesh const& mesh)
{
    return mesh.colors.empty() ? ~0U : mesh.colors.front();
}

SoMaterial* makeMaterial(FltMesh const& mesh)
{
    auto* const node = new SoMaterial;
    SbColor diffuse;
    float transparency;
    diffuse.setPackedValue(colorOf(mesh), transparency);
    node->diffuseColor = diffuse;
    node->transparency = transparency;
    if (mesh.isLit)
        node->ambientColor = mesh.material.ambient;
    node->shininess = mesh.material.shininess;
    if (mesh.material.isFromPalette) {
        node->specularColor = mesh.material.specular;
        node->emissiveColor = mesh.material.emissive;
    }
    return node;
}

bool hasSeveralFaces(FltMesh const& mesh)
{
    auto const end = std::find(mesh.indices.begin(), mesh.indices.end(), FltMesh::end);
    return mesh.kind == FltMesh::Kind::faces && mesh.indices.end() - end > 1;
}

/// The toolkit sorts shapes by their distance from the eye, and the triangles of one if it is told to.
SoTransparencyType::Type transparencyOf(FltMesh const& mesh)
{
    if (!mesh.isBlended)
        return SoTransparencyType::NONE;
    return hasSeveralFaces(mesh) ? SoTransparencyType::SORTED_OBJECT_SORTED_TRIANGLE_BLEND
                                 : SoTransparencyType::SORTED_OBJECT_BLEND;
}

} // namespace

void FltAppearanceNodes::addTo(SoGroup& group, FltMesh const& mesh, bool isMirrored)
{
    bool const isFaces = mesh.kind == FltMesh::Kind::faces;
    if (!mesh.isLit)
        group.addChild(shared(lightModels, 0, [] {
            auto* const node = new SoLightModel;
            node->model = SoLightModel::BASE_COLOR;
            return node;
        }));
    if (isFaces)
        group.addChild(shared(hints, {mesh.isTwoSided, isMirrored}, [&] {
            auto* const node = new SoShapeHints;
            node->vertexOrdering = isMirrored ? SoShapeHints::CLOCKWISE : SoShapeHints::COUNTERCLOCKWISE;
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
    addTransparency(group, mesh);
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
        group.addChild(textureOf(mesh.texture, mesh.isCutOut));
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
        group.addChild(textureOf(layer.texture, mesh.isCutOut));
    }
    group.addChild(shared(units, 0, [] { return new SoTextureUnit; }));
}

SoNode* FltAppearanceNodes::materialOf(FltMesh const& mesh)
{
    FltMesh::Material const& material = mesh.material;
    std::array<float, 10> const values = {material.ambient[0],  material.ambient[1],  material.ambient[2],
                                          material.specular[0], material.specular[1], material.specular[2],
                                          material.emissive[0], material.emissive[1], material.emissive[2],
                                          material.shininess};
    MaterialKey key = {};
    std::memcpy(key.data(), values.data(), sizeof values);
    key[values.size()] = colorOf(mesh);
    key[values.size() + 1] = (mesh.isLit ? 1U : 0U) | (material.isFromPalette ? 2U : 0U);
    return shared(materials, key, [&] { return makeMaterial(mesh); });
}

/// What is cut out is drawn like what is opaque, but for its clear pixels: so it hides what is behind it, and
/// its order doesn't matter.
void FltAppearanceNodes::addTransparency(SoGroup& group, FltMesh const& mesh)
{
    if (mesh.isBlended || mesh.isCutOut || mesh.ignoresTextureAlpha) {
        auto const type = transparencyOf(mesh);
        group.addChild(shared(blendings, static_cast<int>(type), [type] {
            auto* const node = new SoTransparencyType;
            node->value = type;
            return node;
        }));
    }
    if (!mesh.isCutOut)
        return;
    group.addChild(shared(alphaTests, 0, [] {
        auto* const node = new SoAlphaTest;
        node->function = SoAlphaTest::GREATER;
        node->value = 0.5F;
        return node;
    }));
    // The means of many pixels, which are drawn from afar otherwise, are all above a half or all below it: a
    // crown would get full or vanish.
    float const quality = qualityOf(mesh.texture);
    group.addChild(shared(qualities, quality, [quality] {
        auto* const node = new SoComplexity;
        node->type.setIgnored(TRUE);
        node->value.setIgnored(TRUE);
        node->textureQuality = quality;
        return node;
    }));
}

float FltAppearanceNodes::qualityOf(std::int32_t cutOut)
{
    auto const [place, isNew] = qualitiesOfTextures.emplace(cutOut, smoothWithoutMeans);
    auto const& pixels = textures[static_cast<std::size_t>(cutOut)].pixels;
    if (isNew && pixels != nullptr && !coversAsMuchWhenSmooth(*pixels))
        place->second = pixelByPixel;
    return place->second;
}

/// The toolkit makes ready the picture of each node for the quality in which it meets it, so that of a
/// cut-out is another one.
SoTexture2* FltAppearanceNodes::textureOf(std::int32_t number, bool isCutOut)
{
    SoNodeRef<SoTexture2>& node = textureNodes[{number, isCutOut}];
    if (node.get() != nullptr)
        return node.get();
    FltTexture const& texture = textures[static_cast<std::size_t>(number)];
    auto* const shown = new SoSharedTexture;
    node = SoNodeRef<SoTexture2>(shown);
    if (texture.pixels != nullptr)
        shown->setPixels(texture.pixels);
    shown->setFileName(texture.written);
    setAttributes(*shown, texture.attributes);
    return shown;
}
