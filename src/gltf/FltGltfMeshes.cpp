#include "gltf/FltGltfMeshes.h"

#include "visual/FltLiftedFaces.h"
#include "visual/FltLocalOrigin.h"

#include <Inventor/SbBox3d.h>
#include <Inventor/SbBox3f.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <tuple>
#include <utility>

namespace
{

/// With indices of 16 bits, of which the last one stands for something else.
constexpr std::size_t mostCorners = 65535;

/// Corners that may be written again because they stand elsewhere in another form.
constexpr std::int64_t mostRepeated = 4'000'000;

constexpr std::uint32_t none = ~0U;

/// The longest side of all faces of a node: what is seen as a whole.
double extentOf(FltVisualNode const& node)
{
    SbBox3d all;
    for (FltMesh const& mesh : node.meshes) {
        SbBox3f box;
        for (SbVec3f const& position : mesh.positions)
            box.extendBy(position);
        if (mesh.kind == FltMesh::Kind::faces && !box.isEmpty()) {
            all.extendBy(mesh.origin + SbVec3d(box.getMin()));
            all.extendBy(mesh.origin + SbVec3d(box.getMax()));
        }
    }
    SbVec3d const size = all.isEmpty() ? SbVec3d(0, 0, 0) : all.getSize();
    double const longest = std::max({size[0], size[1], size[2]});
    return std::isfinite(longest) ? longest : 0;
}

double liftOf(FltVisualNode const& node, FltGltfMeshes::Place const& place)
{
    constexpr double partOfExtent = 1.0 / 2000;
    bool const isLifted =
        place.isLifted && std::any_of(node.meshes.begin(), node.meshes.end(), FltLiftedFaces::areLifted);
    return isLifted ? FltLiftedFaces::liftOfALevel(extentOf(node), partOfExtent, place.metresPerUnit) : 0;
}

template <class Value>
void append(std::string& key, Value const& value)
{
    key.append(reinterpret_cast<char const*>(&value), sizeof value);
}

/// What makes the meshes of a node differ from those that it has elsewhere. Of lengths floats count, since
/// they come by several ways.
std::string keyOf(FltVisualNode const& node, FltGltfMeshes::Place const& place)
{
    std::string key;
    append(key, reinterpret_cast<std::uintptr_t>(&node));
    append(key, static_cast<float>(liftOf(node, place)));
    for (int i = 0; i < 3; ++i)
        append(key, place.zero[i] + 0.0);
    for (int row = 0; place.workedIn != nullptr && row < 4; ++row)
        for (int column = 0; column < 3; ++column)
            append(key, (*place.workedIn)[row][column]);
    return key;
}

/// Where a mesh stands in its node: right in it where floats hold its positions there.
SbVec3d standOf(FltMesh const& mesh, FltGltfMeshes::Place const& place)
{
    SbVec3d const way = mesh.origin - place.zero;
    bool const isMoved =
        place.workedIn != nullptr || way == SbVec3d(0, 0, 0) || FltLocalOrigin::mayMove(mesh.positions, way);
    SbVec3d const stand = isMoved ? SbVec3d(0, 0, 0) : FltLocalOrigin::roundedToFloats(way);
    bool const isPlace = std::isfinite(stand[0]) && std::isfinite(stand[1]) && std::isfinite(stand[2]);
    return isPlace ? stand : SbVec3d(0, 0, 0);
}

/// Gives corners and indices in parts that 16 bits can number.
template <class Take>
void forEachPart(GltfCorners const& corners, Take take)
{
    std::vector<std::uint32_t> inPart(corners.positions.size(), none);
    std::vector<std::uint32_t> numbers;
    std::vector<std::uint16_t> indices;
    auto const finish = [&] {
        if (numbers.empty())
            return;
        take(numbers, indices);
        for (std::uint32_t const number : numbers)
            inPart[number] = none;
        numbers.clear();
        indices.clear();
    };
    std::size_t const step = corners.cornersOfAShape;
    for (std::size_t i = 0; i < corners.indices.size(); i += step) {
        if (numbers.size() + step > mostCorners)
            finish();
        for (std::size_t j = i; j < i + step; ++j) {
            std::uint32_t const corner = corners.indices[j];
            if (inPart[corner] == none) {
                inPart[corner] = static_cast<std::uint32_t>(numbers.size());
                numbers.push_back(corner);
            }
            indices.push_back(static_cast<std::uint16_t>(inPart[corner]));
        }
    }
    finish();
}

} // namespace

/// Primitives of a node that become one mesh.
class FltGltfMeshes::Collected
{
public:
    struct Group {
        SbVec3d stand;
        bool isHidden;
        GltfJson primitives;
        std::uint64_t triangles;
        SbBox3f box; ///< Of all positions, where they are going to be rounded.

        std::optional<GltfGrid> grid() const
        {
            return box.isEmpty() ? std::nullopt : std::optional(GltfGrid::in(box));
        }
    };

    std::size_t groupOf(SbVec3d const& stand, bool isHidden)
    {
        auto const [known, isNew] =
            numbers.try_emplace({isHidden, stand[0], stand[1], stand[2]}, groups.size());
        if (isNew)
            groups.push_back({stand, isHidden, GltfJson::array(), 0, {}});
        return known->second;
    }

    std::vector<Group> groups;

private:
    std::map<std::tuple<bool, double, double, double>, std::size_t> numbers;
};

/// A mesh of the visual, as it becomes primitives.
struct FltGltfMeshes::Part {
    FltMesh const& mesh;
    std::size_t group;
    FltGltfMaterials::Number material;
    GltfCorners corners;
};

std::vector<FltGltfMeshes::Written> FltGltfMeshes::of(FltVisualNode const& node, Place const& place,
                                                      bool keepsHidden)
{
    if (node.meshes.empty())
        return {};
    if (!place.isShared)
        return write(node, place, keepsHidden);
    auto const [known, isNew] = shared.try_emplace(keyOf(node, place));
    if (!isNew)
        return known->second;
    auto const [first, isFirst] = firstForms.try_emplace(&node, &known->second);
    if (isFirst || mayRepeat(node))
        return known->second = write(node, place, keepsHidden);
    if (place.workedIn == nullptr)
        return known->second = *first->second;
    losses.add("flattened parts that would make the file too large");
    return {};
}

bool FltGltfMeshes::mayRepeat(FltVisualNode const& node)
{
    for (FltMesh const& mesh : node.meshes)
        repeated += static_cast<std::int64_t>(mesh.indices.size() + mesh.positions.size());
    return repeated <= mostRepeated;
}

std::vector<FltGltfMeshes::Written> FltGltfMeshes::write(FltVisualNode const& node, Place const& place,
                                                         bool keepsHidden)
{
    double const lift = liftOf(node, place);
    Collected collected;
    std::vector<Part> rounded; // once the box of all is known
    for (FltMesh const& mesh : node.meshes) {
        if (mesh.isHidden && !keepsHidden) {
            losses.add("hidden parts");
            continue;
        }
        SbVec3d const stand = standOf(mesh, place);
        std::size_t const group = collected.groupOf(stand, mesh.isHidden);
        if (mesh.positions.empty())
            continue;
        GltfCornerForm const form = {mesh.origin - place.zero - stand, lift, place.workedIn};
        FltGltfMaterials::Number const material = materials.numberOf(mesh);
        Part part = {mesh, group, material, GltfCorners(mesh, form, material.hasTexture)};
        losses.add("faces, lines and points with places that are no numbers", part.corners.lost);
        if (!quantizes) {
            addPrimitives(part, collected);
            continue;
        }
        for (std::uint32_t const corner : part.corners.indices)
            collected.groups[group].box.extendBy(part.corners.positions[corner]);
        rounded.push_back(std::move(part));
    }
    for (Part const& part : rounded)
        addPrimitives(part, collected);
    std::vector<Written> written;
    for (Collected::Group& group : collected.groups) {
        if (group.primitives.empty())
            continue;
        GltfJson mesh = GltfJson::object();
        if (!node.name.empty())
            mesh["name"] = GltfValues::text(node.name);
        mesh["primitives"] = std::move(group.primitives);
        int const number = document.add(GltfDocument::List::meshes, mesh);
        GltfGrid const grid = group.grid().value_or(GltfGrid());
        if (group.grid())
            document.use("KHR_mesh_quantization", true);
        written.push_back({number, group.stand + grid.zero, grid.step, group.isHidden, group.triangles});
    }
    std::stable_partition(written.begin(), written.end(), [](Written const& one) { return one.isRightIn(); });
    return written;
}

void FltGltfMeshes::addPrimitives(Part const& part, Collected& collected)
{
    constexpr std::array<int, 4> modes = {0, 0, 1, 4}; // points, lines and triangles, by their corners
    GltfCorners const& corners = part.corners;
    Collected::Group& group = collected.groups[part.group];
    std::optional<GltfGrid> const grid = group.grid();
    bool const isPoints = part.mesh.kind == FltMesh::Kind::points;
    bool const isFaces = part.mesh.kind == FltMesh::Kind::faces;
    forEachPart(corners,
                [&](std::vector<std::uint32_t> const& numbers, std::vector<std::uint16_t> const& indices) {
                    GltfJson primitive = {{"attributes", views.addCorners(corners, numbers, grid)}};
                    if (!isPoints)
                        primitive["indices"] = views.addIndices(indices, isFaces);
                    primitive["material"] = part.material.material;
                    primitive["mode"] = modes.at(corners.cornersOfAShape);
                    group.primitives.push_back(std::move(primitive));
                    vertexCount += numbers.size();
                });
    group.triangles += isFaces ? corners.indices.size() / 3 : 0;
}
