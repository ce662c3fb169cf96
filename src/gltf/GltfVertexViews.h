#pragma once

#include "gltf/GltfCorners.h"
#include "gltf/GltfDocument.h"

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
    GltfJson addCorners(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);

    /// Adds indices. @return the number of their accessor
    int addIndices(std::vector<std::uint16_t> const& indices);

private:
    /// A view, which begins with the first number in it.
    struct View {
        GltfBinary::Target target;
        std::size_t stride;
        std::optional<int> number;
    };

    std::string& bytesOf(View& view);
    static GltfJson accessor(View const& view, std::size_t offset, int componentType, std::size_t count,
                             char const* type);
    int addPositions(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addNormals(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addUvs(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);
    int addColors(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers);

    GltfDocument& document;
    View positions{GltfBinary::Target::vertices, 3 * sizeof(float), {}};
    View normals{GltfBinary::Target::vertices, 3 * sizeof(float), {}};
    View uvs{GltfBinary::Target::vertices, 2 * sizeof(float), {}};
    View colors{GltfBinary::Target::vertices, 4 * sizeof(std::uint16_t), {}};
    View indices{GltfBinary::Target::indices, 0, {}};
};
