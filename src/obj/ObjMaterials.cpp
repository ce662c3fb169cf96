#include "obj/ObjMaterials.h"

#include "gltf/GltfJson.h"
#include "obj/ObjText.h"

#include <array>

namespace
{

/// The colour of all corners together, from 0 to 1: red, green, blue and alpha.
std::array<double, 4> colorOf(FltMesh const& mesh)
{
    constexpr double mostOfByte = 255;
    std::array<double, 4> sum{};
    for (std::uint32_t const packed : mesh.colors)
        for (unsigned part = 0; part < sum.size(); ++part)
            sum.at(part) += packed >> (24 - 8 * part) & 0xff;
    for (double& part : sum)
        part = mesh.colors.empty() ? 1 : part / mostOfByte / static_cast<double>(mesh.colors.size());
    return sum;
}

} // namespace

std::string ObjMaterials::nameOf(FltMesh const& mesh)
{
    constexpr double lit = 2, unlit = 0, mostShininess = 128;
    ObjText body;
    std::array<double, 4> const color = colorOf(mesh);
    bool const isLit = mesh.isLit && mesh.kind == FltMesh::Kind::faces;
    body.line("Kd", {color[0], color[1], color[2]});
    if (isLit) {
        body.line("Ks", mesh.material.specular);
        body.line("Ns", {static_cast<double>(mesh.material.shininess) * mostShininess});
        body.line("Ke", mesh.material.emissive);
    }
    body.line("d", {mesh.isBlended ? color[3] : 1});
    body.line("illum", {isLit ? lit : unlit});
    std::string const& picture = pictureOf(mesh);
    if (!picture.empty()) {
        body.line("map_Kd", picture);
        if (mesh.isCutOut || (mesh.isBlended && !mesh.ignoresTextureAlpha))
            body.line("map_d", picture);
    }
    auto const [known, isNew] = names.try_emplace(body.text());
    if (isNew) {
        known->second = "material" + std::to_string(names.size());
        order.emplace_back(known->second, &known->first);
    }
    if (mesh.colors.size() > 1)
        losses.add("colours of single corners");
    losses.add("further texture layers", mesh.layers.size());
    return known->second;
}

/// @return where the picture of a mesh is, seen from the file; empty if it has none
std::string const& ObjMaterials::pictureOf(FltMesh const& mesh)
{
    static std::string const none;
    bool const isTextured = mesh.kind == FltMesh::Kind::faces && mesh.texture != FltMesh::none &&
                            mesh.uvs.size() == mesh.positions.size();
    if (!isTextured)
        return none;
    FltTexture const& texture = textures[static_cast<std::size_t>(mesh.texture)];
    if (texture.pixels == nullptr) {
        if (!texture.name.empty())
            missingNames.insert(texture.name);
        return none;
    }
    bool const isOpaque = mesh.isBlended && mesh.ignoresTextureAlpha;
    auto const [known, isNew] = pictures.try_emplace({texture.pixels.get(), isOpaque});
    if (isNew) {
        GltfPicture const picture(texture, isOpaque, source);
        if (!picture.bytes.empty())
            known->second = files.add(picture, GltfValues::lastPart(texture.name));
    }
    return known->second;
}

std::string ObjMaterials::text() const
{
    std::string text;
    for (auto const& [name, body] : order)
        text.append("newmtl ").append(name).append("\n").append(*body);
    return text;
}
