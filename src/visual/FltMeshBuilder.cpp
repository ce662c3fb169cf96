#include "visual/FltMeshBuilder.h"

#include "visual/FltLocalOrigin.h"

#include <algorithm>
#include <utility>

namespace
{

SbColor colorOf(float const (&values)[3])
{
    auto const part = [](float value) { return value >= 0 ? std::min(value, 1.0F) : 0.0F; };
    return {part(values[0]), part(values[1]), part(values[2])};
}

/// The format's shininess goes to 128.
float shininessOf(float value)
{
    return value >= 0 ? std::min(value / 128.0F, 1.0F) : 0.0F;
}

} // namespace

std::int32_t FltMeshBuilder::addCorner(Corner const& corner, SbColor const& ambient)
{
    hasSeveralColors = hasSeveralColors || (!mesh.colors.empty() && mesh.colors.front() != corner.color);
    places.push_back(corner.position);
    mesh.colors.push_back(corner.color);
    if (appearance.isLit)
        mesh.normals.push_back(corner.normal);
    if (appearance.texture != FltAppearance::none)
        mesh.uvs.push_back(corner.uv);
    for (int i = 0; i < 3; ++i)
        ambientSum[i] += ambient[i];
    return static_cast<std::int32_t>(places.size()) - 1;
}

void FltMeshBuilder::addLayerUv(std::size_t layer, SbVec2f const& uv)
{
    if (mesh.layers.size() <= layer)
        mesh.layers.resize(layer + 1);
    std::vector<SbVec2f>& uvs = mesh.layers[layer].uvs;
    uvs.resize(places.size() - 1, SbVec2f(0, 0));
    uvs.push_back(uv);
}

bool FltMeshBuilder::looksAlike(std::int32_t number, Corner const& corner) const
{
    auto const at = static_cast<std::size_t>(number);
    return mesh.colors[at] == corner.color && (!appearance.isLit || mesh.normals[at] == corner.normal) &&
           (appearance.texture == FltAppearance::none || mesh.uvs[at] == corner.uv);
}

FltMesh FltMeshBuilder::finish(FltMaterialValues const* material, double metresPerUnit)
{
    mesh.kind = appearance.kind;
    mesh.isLit = appearance.isLit;
    mesh.isTwoSided = appearance.isTwoSided;
    mesh.isBlended = appearance.isBlended;
    mesh.ignoresTextureAlpha = appearance.ignoresTextureAlpha;
    mesh.isHidden = appearance.isHidden;
    mesh.isOutlined = appearance.isOutlined;
    mesh.level = appearance.level;
    mesh.size = appearance.size;
    if (mesh.isLit)
        mesh.material = materialOf(material);
    if (!hasSeveralColors)
        mesh.colors.resize(std::min<std::size_t>(mesh.colors.size(), 1));
    mesh.normals.shrink_to_fit();
    mesh.uvs.shrink_to_fit();
    mesh.colors.shrink_to_fit();
    mesh.indices.shrink_to_fit();
    for (FltMesh::Layer& layer : mesh.layers) {
        layer.uvs.resize(places.size(), SbVec2f(0, 0));
        layer.uvs.shrink_to_fit();
    }
    placeCorners(metresPerUnit);
    return std::move(mesh);
}

void FltMeshBuilder::placeCorners(double metresPerUnit)
{
    mesh.origin = FltLocalOrigin::of(places, metresPerUnit);
    mesh.positions.reserve(places.size());
    for (SbVec3d const& place : places)
        mesh.positions.emplace_back(place - mesh.origin);
    places = {};
}

FltMesh::Material FltMeshBuilder::materialOf(FltMaterialValues const* values) const
{
    FltMesh::Material material;
    auto const count = static_cast<double>(std::max<std::size_t>(places.size(), 1));
    for (int i = 0; i < 3; ++i)
        material.ambient[i] = static_cast<float>(ambientSum[i] / count);
    if (values == nullptr)
        return material;
    material.isFromPalette = true;
    material.specular = colorOf(values->specular);
    material.emissive = colorOf(values->emissive);
    material.shininess = shininessOf(values->shininess);
    return material;
}
