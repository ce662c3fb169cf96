#include "visual/FltMeshJoiner.h"

#include "visual/FltLocalOrigin.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>

namespace
{

using Source = FltMeshJoiner::Source;

/// A mesh's ambient colour is a mean, of which no picture shows the last digits.
long inSteps(float part)
{
    constexpr float steps = 1024;
    return std::lround(part * steps);
}

bool isSameAmbient(SbColor const& left, SbColor const& right)
{
    return inSteps(left[0]) == inSteps(right[0]) && inSteps(left[1]) == inSteps(right[1]) &&
           inSteps(left[2]) == inSteps(right[2]);
}

bool isSameMaterial(FltMesh::Material const& left, FltMesh::Material const& right)
{
    return left.isFromPalette == right.isFromPalette && left.shininess == right.shininess &&
           left.specular == right.specular && left.emissive == right.emissive &&
           isSameAmbient(left.ambient, right.ambient);
}

bool haveSameLayers(FltMesh const& left, FltMesh const& right)
{
    return std::equal(left.layers.begin(), left.layers.end(), right.layers.begin(), right.layers.end(),
                      [](FltMesh::Layer const& one, FltMesh::Layer const& other) {
                          return one.number == other.number && one.texture == other.texture;
                      });
}

/// How many faces, lines or points there are.
std::int32_t countOf(FltMesh const& mesh)
{
    return static_cast<std::int32_t>(
        mesh.kind == FltMesh::Kind::points
            ? mesh.positions.size()
            : static_cast<std::size_t>(std::count(mesh.indices.begin(), mesh.indices.end(), FltMesh::end)));
}

void addColors(FltMesh& all, FltMesh const& mesh, bool areEqual)
{
    if (areEqual)
        all.colors = {mesh.colors.front()};
    else if (mesh.colors.size() == 1)
        all.colors.insert(all.colors.end(), mesh.positions.size(), mesh.colors.front());
    else
        all.colors.insert(all.colors.end(), mesh.colors.begin(), mesh.colors.end());
}

void addNormals(FltMesh& all, Source const& source)
{
    SbDPMatrix const toNormals = source.matrix.inverse().transpose();
    for (SbVec3f const& normal : source.mesh.normals) {
        SbVec3d turned;
        toNormals.multDirMatrix(SbVec3d(normal), turned);
        double const length = turned.length();
        all.normals.push_back(length > 0 ? SbVec3f(turned / length) : normal);
    }
}

template <class Value>
void append(std::vector<Value>& all, std::vector<Value> const& values)
{
    all.insert(all.end(), values.begin(), values.end());
}

} // namespace

bool FltMeshJoiner::mayJoin(FltMesh const& mesh)
{
    std::size_t const corners = mesh.positions.size();
    auto const isFull = [corners](auto const& values) { return values.size() == corners; };
    return !mesh.isBlended && !mesh.isHidden && corners > 0 && mesh.parts.empty() &&
           (mesh.colors.size() == 1 || isFull(mesh.colors)) && mesh.isLit == isFull(mesh.normals) &&
           (mesh.texture != FltMesh::none) == isFull(mesh.uvs) &&
           std::all_of(mesh.layers.begin(), mesh.layers.end(),
                       [&](FltMesh::Layer const& layer) { return isFull(layer.uvs); });
}

bool FltMeshJoiner::lookAlike(FltMesh const& left, FltMesh const& right)
{
    return left.kind == right.kind && left.isLit == right.isLit && left.isTwoSided == right.isTwoSided &&
           left.isCutOut == right.isCutOut && left.ignoresTextureAlpha == right.ignoresTextureAlpha &&
           left.isOutlined == right.isOutlined && left.level == right.level && left.size == right.size &&
           left.texture == right.texture && haveSameLayers(left, right) &&
           isSameMaterial(left.material, right.material);
}

std::size_t FltMeshJoiner::hashOf(FltMesh const& mesh)
{
    constexpr std::size_t factor = 1'000'003;
    std::size_t hash = static_cast<std::size_t>(mesh.kind) | std::size_t(mesh.isLit) << 2 |
                       std::size_t(mesh.isTwoSided) << 3 | std::size_t(mesh.level) << 4;
    hash = hash * factor ^ std::hash<std::int32_t>()(mesh.texture);
    hash = hash * factor ^ std::hash<float>()(mesh.material.shininess);
    for (int i = 0; i < 3; ++i)
        hash = hash * factor ^ std::hash<long>()(inSteps(mesh.material.ambient[i]));
    return hash;
}

SbVec3d FltMeshJoiner::placeOf(Source const& source, SbVec3f const& position)
{
    SbVec3d place;
    source.matrix.multVecMatrix(source.mesh.origin + SbVec3d(position), place);
    return place;
}

FltMesh FltMeshJoiner::join(std::vector<Source*> const& sources, double metresPerUnit)
{
    FltMesh const& first = sources.front()->mesh;
    FltMesh all = first;
    all.positions = {};
    all.normals = {};
    all.uvs = {};
    all.colors = {};
    all.indices = {};
    for (FltMesh::Layer& layer : all.layers)
        layer.uvs = {};
    bool const isOneColor = std::all_of(sources.begin(), sources.end(), [&](Source const* source) {
        return source->mesh.colors.size() == 1 && source->mesh.colors.front() == first.colors.front();
    });
    std::vector<SbVec3d> places;
    std::int32_t number = 0;
    for (Source* const source : sources) {
        FltMesh const& mesh = source->mesh;
        auto const before = static_cast<std::int32_t>(places.size());
        all.parts.push_back({number, source->record});
        number += countOf(mesh);
        for (SbVec3f const& position : mesh.positions)
            places.push_back(placeOf(*source, position));
        for (std::int32_t const index : mesh.indices)
            all.indices.push_back(index == FltMesh::end ? index : index + before);
        addColors(all, mesh, isOneColor);
        if (source->matrix == SbDPMatrix::identity())
            append(all.normals, mesh.normals);
        else
            addNormals(all, *source);
        append(all.uvs, mesh.uvs);
        for (std::size_t i = 0; i < mesh.layers.size(); ++i)
            append(all.layers[i].uvs, mesh.layers[i].uvs);
        if (source != sources.front())
            source->mesh = {};
    }
    all.origin = FltLocalOrigin::of(places, metresPerUnit);
    all.positions.reserve(places.size());
    for (SbVec3d const& place : places)
        all.positions.emplace_back(place - all.origin);
    sources.front()->mesh = {};
    return all;
}
