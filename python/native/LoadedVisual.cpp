#include "LoadedVisual.h"

#include "visual/FltMeshIndices.h"

#include <map>
#include <utility>

namespace
{

using Array = PlacedMesh::Array;

template <class Vector>
Array vectorsOf(std::vector<Vector> const& vectors, std::size_t columns)
{
    return {vectors.data(), vectors.size(), columns, "f"};
}

Array indicesOf(std::vector<std::uint32_t> const& indices, std::size_t columns)
{
    return {indices.data(), indices.size() / columns, columns, "I"};
}

} // namespace

MeshCorners::MeshCorners(FltMesh const& mesh)
    : indices(mesh.kind == FltMesh::Kind::faces ? FltMeshIndices::triangles(mesh)
                                                : FltMeshIndices::lines(mesh))
{
    colors.reserve(4 * mesh.positions.size());
    for (std::size_t corner = 0; corner < mesh.positions.size(); ++corner) {
        std::uint32_t const color = mesh.colors.empty()      ? ~0U
                                    : mesh.colors.size() > 1 ? mesh.colors[corner]
                                                             : mesh.colors.front();
        for (int const shift : {24, 16, 8, 0})
            colors.push_back(static_cast<std::uint8_t>(color >> shift));
    }
}

LoadedVisual::LoadedVisual(FltVisual loaded) : visual(std::move(loaded))
{
    std::map<std::pair<std::string, std::string>, std::int32_t> numbers;
    for (FltTexture const& texture : visual.textures) {
        auto const next = static_cast<std::int32_t>(numbers.size());
        textureNumbers.push_back(
            texture.name.empty() ? FltMesh::none
                                 : numbers.try_emplace({texture.name, texture.database}, next).first->second);
    }
}

std::int32_t LoadedVisual::textureOf(std::int32_t number) const
{
    return number < 0 ? FltMesh::none : textureNumbers[static_cast<std::size_t>(number)];
}

std::shared_ptr<MeshCorners const> LoadedVisual::cornersOf(FltMesh const& mesh)
{
    std::weak_ptr<MeshCorners const>& known = corners[&mesh];
    std::shared_ptr<MeshCorners const> made = known.lock();
    if (made == nullptr) {
        made = std::make_shared<MeshCorners>(mesh);
        known = made;
    }
    return made;
}

PlacedMesh::PlacedMesh(std::shared_ptr<LoadedVisual> visual, FltVisualWalk const& walk)
    : mesh(walk.mesh()), visual(std::move(visual))
{
    walk.matrix().transpose().getValue(transform);
}

MeshCorners const& PlacedMesh::corners()
{
    if (ownCorners == nullptr)
        ownCorners = visual->cornersOf(mesh);
    return *ownCorners;
}

PlacedMesh::Array PlacedMesh::array(std::string_view which, std::size_t layer)
{
    if (which == "transform")
        return {transform, 4, 4, "d"};
    if (which == "origin")
        return {mesh.origin.getValue(), 3, 0, "d"};
    if (which == "positions")
        return vectorsOf(mesh.positions, 3);
    if (which == "normals")
        return vectorsOf(mesh.normals, 3);
    if (which == "uvs")
        return vectorsOf(mesh.uvs, 2);
    if (which == "layer" && layer < mesh.layers.size())
        return vectorsOf(mesh.layers[layer].uvs, 2);
    if (which == "colors")
        return {corners().colors.data(), corners().colors.size() / 4, 4, "B"};
    if (which == "triangles" && mesh.kind == FltMesh::Kind::faces)
        return indicesOf(corners().indices, 3);
    if (which == "lines" && mesh.kind == FltMesh::Kind::lines)
        return indicesOf(corners().indices, 2);
    return {};
}
