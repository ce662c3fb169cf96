#include "gltf/GltfCorners.h"

#include "visual/FltLiftedFaces.h"
#include "visual/FltMeshIndices.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <meshoptimizer.h>
#include <numeric>

namespace
{

/// No database has such places, and readers work with their squares.
constexpr float endless = 1e18F;

bool isPlace(SbVec3f const& position)
{
    return std::abs(position[0]) < endless && std::abs(position[1]) < endless &&
           std::abs(position[2]) < endless;
}

/// Numbers without the sign of -0, so that equal ones have equal bytes.
SbVec3f withoutSigns(SbVec3f const& vector)
{
    return {vector[0] + 0.0F, vector[1] + 0.0F, vector[2] + 0.0F};
}

/// As it stands upright on faces after a matrix, also after one that flattens.
SbVec3d turned(SbVec3f const& normal, SbDPMatrix const& matrix)
{
    auto const row = [&](int i) { return SbVec3d(matrix[i][0], matrix[i][1], matrix[i][2]); };
    return row(1).cross(row(2)) * static_cast<double>(normal[0]) +
           row(2).cross(row(0)) * static_cast<double>(normal[1]) +
           row(0).cross(row(1)) * static_cast<double>(normal[2]);
}

SbVec3f ofLengthOne(SbVec3d normal)
{
    double const length = normal.length();
    if (!std::isfinite(length) || !(length > 0))
        return {0, 0, 1};
    return withoutSigns(SbVec3f(normal / length));
}

} // namespace

GltfCorners::GltfCorners(FltMesh const& mesh, GltfCornerForm const& form, bool hasUvs)
{
    bool const isFaces = mesh.kind == FltMesh::Kind::faces;
    place(mesh, form);
    if (isFaces && mesh.isLit && mesh.normals.size() == mesh.positions.size())
        takeNormals(mesh, form);
    if (hasUvs && mesh.uvs.size() == mesh.positions.size())
        takeUvs(mesh);
    if (mesh.colors.size() > 1)
        colors = mesh.colors;
    takeIndices(mesh);
    if (mesh.kind == FltMesh::Kind::points)
        return;
    joinEqual();
    if (isFaces && !mesh.isBlended) // what is blended is drawn in the order of the database
        orderForCache();
}

void GltfCorners::place(FltMesh const& mesh, GltfCornerForm const& form)
{
    bool const isLifted = form.lift != 0 && FltLiftedFaces::areLifted(mesh);
    positions = isLifted ? FltLiftedFaces::positions(mesh, form.lift) : mesh.positions;
    for (SbVec3f& position : positions) {
        SbVec3d exact = SbVec3d(position) + form.way;
        if (form.workedIn != nullptr)
            form.workedIn->multVecMatrix(exact, exact);
        position = withoutSigns(SbVec3f(exact));
    }
}

void GltfCorners::takeNormals(FltMesh const& mesh, GltfCornerForm const& form)
{
    constexpr float nearlyOne = 1e-5F;
    normals.reserve(mesh.normals.size());
    for (SbVec3f const& normal : mesh.normals)
        if (form.workedIn != nullptr)
            normals.push_back(ofLengthOne(turned(normal, *form.workedIn)));
        else if (std::abs(normal.sqrLength() - 1) < nearlyOne)
            normals.push_back(withoutSigns(normal));
        else
            normals.push_back(ofLengthOne(SbVec3d(normal)));
}

void GltfCorners::takeUvs(FltMesh const& mesh)
{
    uvs.reserve(mesh.uvs.size());
    for (SbVec2f const& uv : mesh.uvs) {
        bool const isThere = std::isfinite(uv[0]) && std::isfinite(uv[1]);
        uvs.emplace_back(isThere ? uv[0] + 0.0F : 0.0F, isThere ? 1 - uv[1] + 0.0F : 0.0F);
    }
}

void GltfCorners::takeIndices(FltMesh const& mesh)
{
    switch (mesh.kind) {
    case FltMesh::Kind::faces:
        cornersOfAShape = 3;
        indices = FltMeshIndices::triangles(mesh);
        break;
    case FltMesh::Kind::lines:
        cornersOfAShape = 2;
        indices = FltMeshIndices::lines(mesh);
        break;
    case FltMesh::Kind::points:
        indices.resize(positions.size());
        std::iota(indices.begin(), indices.end(), 0U);
        break;
    }
    if (std::all_of(positions.begin(), positions.end(), isPlace))
        return;
    std::size_t kept = 0;
    for (std::size_t i = 0; i + cornersOfAShape <= indices.size(); i += cornersOfAShape) {
        auto const* const shape = indices.data() + i;
        if (std::all_of(shape, shape + cornersOfAShape,
                        [this](std::uint32_t corner) { return isPlace(positions[corner]); })) {
            std::copy_n(shape, cornersOfAShape, indices.data() + kept);
            kept += cornersOfAShape;
        } else {
            ++lost;
        }
    }
    indices.resize(kept);
}

void GltfCorners::joinEqual()
{
    std::array<meshopt_Stream, 4> streams{};
    std::size_t count = 0;
    auto const add = [&](auto const& list) {
        if (!list.empty())
            streams.at(count++) = {list.data(), sizeof list.front(), sizeof list.front()};
    };
    add(positions);
    add(normals);
    add(uvs);
    add(colors);
    if (indices.empty())
        return;
    std::size_t const indexCount = indices.size();
    indices.resize((indexCount + 2) / 3 * 3, indices.back()); // the library takes triangles alone
    std::vector<std::uint32_t> numbers(positions.size());
    std::size_t const left = ::meshopt_generateVertexRemapMulti(
        numbers.data(), indices.data(), indices.size(), positions.size(), streams.data(), count);
    ::meshopt_remapIndexBuffer(indices.data(), indices.data(), indices.size(), numbers.data());
    indices.resize(indexCount);
    auto const renumber = [&](auto& list) {
        if (list.empty())
            return;
        ::meshopt_remapVertexBuffer(list.data(), list.data(), numbers.size(), sizeof list.front(),
                                    numbers.data());
        list.resize(left);
    };
    renumber(positions);
    renumber(normals);
    renumber(uvs);
    renumber(colors);
}

void GltfCorners::orderForCache()
{
    constexpr std::size_t tooFewToMatter = 3 * 16;
    constexpr unsigned cacheSize = 16;
    if (indices.size() > tooFewToMatter)
        ::meshopt_optimizeVertexCacheFifo(indices.data(), indices.data(), indices.size(), positions.size(),
                                          cacheSize);
}
