#include "complete/FltShapeBatch.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureUnit.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>

namespace
{

template <class Field, class Value>
void setAll(Field& field, std::vector<Value> const& values)
{
    field.setNum(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), field.startEditing());
    field.finishEditing();
}

SbColor colorOf(float const (&values)[3])
{
    auto const part = [](float value) { return value >= 0 ? std::min(value, 1.0F) : 0.0F; };
    return {part(values[0]), part(values[1]), part(values[2])};
}

/// The toolkit's shininess goes to 1, the format's to 128.
float shininessOf(float value)
{
    return value >= 0 ? std::min(value / 128.0F, 1.0F) : 0.0F;
}

} // namespace

std::int32_t FltShapeBatch::addCorner(Corner const& corner, SbColor const& ambient)
{
    hasSeveralColors = hasSeveralColors || (!colors.empty() && colors.front() != corner.color);
    positions.push_back(corner.position);
    colors.push_back(corner.color);
    if (appearance.isLit)
        normals.push_back(corner.normal);
    if (appearance.texture != FltAppearance::none)
        uvs.push_back(corner.uv);
    for (int i = 0; i < 3; ++i)
        ambientSum[i] += ambient[i];
    return getCornerCount() - 1;
}

void FltShapeBatch::addLayerUv(std::size_t layer, SbVec2f const& uv)
{
    if (layerUvs.size() <= layer)
        layerUvs.resize(layer + 1);
    layerUvs[layer].resize(positions.size() - 1, SbVec2f(0, 0));
    layerUvs[layer].push_back(uv);
}

bool FltShapeBatch::looksAlike(std::int32_t number, Corner const& corner) const
{
    auto const at = static_cast<std::size_t>(number);
    return colors[at] == corner.color && (!appearance.isLit || normals[at] == corner.normal) &&
           (appearance.texture == FltAppearance::none || uvs[at] == corner.uv);
}

FltScenePart FltShapeBatch::makePart(FltAppearanceNodes& nodes, FltMaterialValues const* material) const
{
    FltGroupBuilder group(new SoSeparator);
    nodes.addTo(group, appearance);
    addLayerCoordinates(group, nodes);
    group.addProperty(makeMaterial(material));
    FltScenePart shape;
    shape.node = SoNodeRef<SoNode>(makeShape());
    shape.visits = 2;
    shape.depth = 2;
    for (SbVec3f const& position : positions)
        shape.box.extendBy(position);
    group.add(shape);
    if (!appearance.isHidden)
        return group.finish();
    auto* const closed = new SoSwitch;
    closed->setName("hidden");
    FltGroupBuilder hidden(closed);
    hidden.add(group.finish());
    FltScenePart part = hidden.finish();
    part.box.makeEmpty();
    return part;
}

/// The units of further textures take their coordinates by the same indices as the first.
void FltShapeBatch::addLayerCoordinates(FltGroupBuilder& group, FltAppearanceNodes& nodes) const
{
    if (appearance.layers == FltAppearance::none)
        return;
    std::size_t layer = 0;
    for (FltAppearanceNodes::Layer const& each : nodes.getLayers(appearance.layers)) {
        if (layer >= layerUvs.size())
            break;
        auto* const unit = new SoTextureUnit;
        unit->unit = each.unit;
        auto* const coordinates = new SoTextureCoordinate2;
        setAll(coordinates->point, layerUvs[layer++]);
        group.addProperty(unit);
        group.addProperty(coordinates);
    }
    group.addProperty(new SoTextureUnit);
}

SoNode* FltShapeBatch::makeMaterial(FltMaterialValues const* material) const
{
    auto* const node = new SoMaterial;
    std::uint32_t const color = colors.empty() ? FltColors::white : colors.front();
    SbColor diffuse;
    float transparency;
    diffuse.setPackedValue(color, transparency);
    node->diffuseColor = diffuse;
    node->transparency = transparency;
    SbColor ambient;
    for (int i = 0; i < 3; ++i)
        ambient[i] = static_cast<float>(ambientSum[i] /
                                        static_cast<double>(std::max<std::size_t>(positions.size(), 1)));
    if (appearance.isLit)
        node->ambientColor = ambient;
    if (appearance.isLit && material != nullptr) {
        node->specularColor = colorOf(material->specular);
        node->emissiveColor = colorOf(material->emissive);
        node->shininess = shininessOf(material->shininess);
    } else {
        node->shininess = 0;
    }
    return node;
}

SoVertexProperty* FltShapeBatch::makeVertexProperty() const
{
    auto* const property = new SoVertexProperty;
    setAll(property->vertex, positions);
    if (!normals.empty())
        setAll(property->normal, normals);
    if (!uvs.empty())
        setAll(property->texCoord, uvs);
    bool const isPoints = appearance.kind == FltAppearance::Kind::points;
    property->normalBinding = isPoints ? SoVertexProperty::PER_VERTEX : SoVertexProperty::PER_VERTEX_INDEXED;
    if (hasOneColor()) {
        property->materialBinding = SoVertexProperty::OVERALL;
    } else {
        setAll(property->orderedRGBA, colors);
        property->materialBinding =
            isPoints ? SoVertexProperty::PER_VERTEX : SoVertexProperty::PER_VERTEX_INDEXED;
    }
    return property;
}

SoNode* FltShapeBatch::makeShape() const
{
    SoVertexProperty* const property = makeVertexProperty();
    if (appearance.kind == FltAppearance::Kind::points) {
        auto* const points = new SoPointSet;
        points->vertexProperty = property;
        return points;
    }
    if (appearance.kind == FltAppearance::Kind::lines) {
        auto* const lines = new SoIndexedLineSet;
        lines->vertexProperty = property;
        setAll(lines->coordIndex, indices);
        return lines;
    }
    auto* const faces = new SoIndexedFaceSet;
    faces->vertexProperty = property;
    setAll(faces->coordIndex, indices);
    return faces;
}
