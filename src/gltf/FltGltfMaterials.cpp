#include "gltf/FltGltfMaterials.h"

#include "gltf/GltfColors.h"

#include <cmath>
#include <cstdint>

namespace
{

constexpr std::uint32_t white = ~0U;
constexpr double mostOfByte = 255;

double linear(double part)
{
    return GltfValues::part(GltfColors::linear(part));
}

GltfJson linear(SbColor const& color)
{
    return GltfJson::array({linear(static_cast<double>(color[0])), linear(static_cast<double>(color[1])),
                            linear(static_cast<double>(color[2]))});
}

/// The colour of all corners, if they have one.
GltfJson factorOf(std::uint32_t packed)
{
    auto const part = [packed](unsigned shift) { return (packed >> shift & 0xff) / mostOfByte; };
    return GltfJson::array({linear(part(24)), linear(part(16)), linear(part(8)), GltfValues::part(part(0))});
}

/// As rough as the shine of a material is wide.
double roughnessOf(FltMesh const& mesh)
{
    constexpr double mostShininess = 128;
    bool const shines =
        mesh.isLit && mesh.material.isFromPalette && mesh.material.specular != SbColor(0, 0, 0);
    return shines ? std::sqrt(2 / (static_cast<double>(mesh.material.shininess) * mostShininess + 2)) : 1;
}

} // namespace

FltGltfMaterials::Number FltGltfMaterials::numberOf(FltMesh const& mesh)
{
    bool const isFaces = mesh.kind == FltMesh::Kind::faces;
    int const texture = textureOf(mesh);
    tellWhatIsLost(mesh, texture != FltGltfTextures::none);
    GltfJson material = GltfJson::object();
    GltfJson base = GltfJson::object();
    if (mesh.colors.size() == 1 && mesh.colors.front() != white)
        base["baseColorFactor"] = factorOf(mesh.colors.front());
    if (texture != FltGltfTextures::none)
        base["baseColorTexture"] = {{"index", texture}};
    base["metallicFactor"] = 0; // metal is what it is without this
    base["roughnessFactor"] = GltfValues::part(roughnessOf(mesh));
    material["pbrMetallicRoughness"] = std::move(base);
    if (isFaces && mesh.isLit && mesh.material.emissive != SbColor(0, 0, 0))
        material["emissiveFactor"] = linear(mesh.material.emissive);
    if (mesh.isCutOut && texture != FltGltfTextures::none)
        material["alphaMode"] = "MASK";
    else if (mesh.isBlended)
        material["alphaMode"] = "BLEND";
    if (isFaces && mesh.isTwoSided)
        material["doubleSided"] = true;
    if (!mesh.isLit || !isFaces) {
        document.use("KHR_materials_unlit");
        material["extensions"] = {{"KHR_materials_unlit", GltfJson::object()}};
    }
    auto const [known, isNew] = numbers.try_emplace(material.dump(), 0);
    if (isNew)
        known->second = document.add(GltfDocument::List::materials, material);
    return {known->second, texture != FltGltfTextures::none};
}

int FltGltfMaterials::textureOf(FltMesh const& mesh)
{
    if (mesh.kind != FltMesh::Kind::faces || mesh.texture == FltMesh::none || mesh.uvs.empty())
        return FltGltfTextures::none;
    return textures.numberOf(mesh.texture, mesh.isBlended && mesh.ignoresTextureAlpha);
}

void FltGltfMaterials::tellWhatIsLost(FltMesh const& mesh, bool hasTexture)
{
    using Environment = FltTextureAttributes::Environment;
    if (mesh.kind != FltMesh::Kind::faces && mesh.size > 0)
        losses.add(mesh.kind == FltMesh::Kind::lines ? "widths of lines" : "sizes of points");
    if (hasTexture && textures[mesh.texture].attributes.environment != Environment::modulate)
        losses.add("textures that don't modulate");
    losses.add("further texture layers", mesh.layers.size());
}
