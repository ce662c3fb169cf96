#pragma once

#include "gltf/GltfCorners.h"
#include "gltf/GltfDocument.h"
#include "gltf/GltfGrid.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// The numbers of all meshes of a glTF file, one view for each kind of them.
class GltfVertexViews
{
public:
    /// Has to outlive this object.
    explicit GltfVertexViews(GltfDocument& document) : document(document) {}

    /// Adds corners. @return the attributes of a primitive that is made of them
    /// @param numbers of those corners that are added, in their order
    /// @param grid    that positions are rounded to, the other numbers in the same way; nothing to round none
    GltfJson addCorners(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers,
                        std::optional<GltfGrid> const& grid);

    /// Adds indices. @return the number of their accessor
    /// @param areTriangles whether each three of them are one
    int addIndices(std::vector<std::uint16_t> const& values, bool areTriangles);

private:
    /// A view, which begins with the first number in it.
    struct View {
        GltfBinary::Content content;
        std::size_t stride;
        std::optional<int> number;
    };

    std::string& bytesOf(View& view);
    int add(View const& view, std::size_t offset, int componentType, std::size_t count, char const* type,
            GltfJson const& more);
    int addPositions(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addPlaces(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers,
                  GltfGrid const& grid);
    int addNormals(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addRoundNormals(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addUvs(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addRoundUvs(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addColors(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);

    GltfDocument& document;
    View positions{GltfBinary::Content::corners, 3 * sizeof(float), {}};
    View normals{GltfBinary::Content::corners, 3 * sizeof(float), {}};
    View uvs{GltfBinary::Content::corners, 2 * sizeof(float), {}};
    View colors{GltfBinary::Content::corners, 4 * sizeof(std::uint16_t), {}};
    View places{GltfBinary::Content::corners, 4 * sizeof(std::uint16_t), {}};
    View roundNormals{GltfBinary::Content::corners, 4 * sizeof(std::int8_t), {}};
    View roundUvs{GltfBinary::Content::corners, 2 * sizeof(std::uint16_t), {}};
    View triangles{GltfBinary::Content::triangles, 0, {}};
    View lines{GltfBinary::Content::indices, 0, {}};
};
