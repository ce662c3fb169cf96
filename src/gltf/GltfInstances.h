#pragma once

#include "gltf/GltfDocument.h"
#include "gltf/GltfTransforms.h"

#include <optional>
#include <vector>

/// Nodes of a glTF file that show a mesh at many places.
class GltfInstances
{
public:
    /// Has to outlive this object.
    explicit GltfInstances(GltfDocument& document) : document(document) {}

    /// Adds a node. @return its number
    /// @param mesh   its number
    /// @param stand  where it stands at each place
    /// @param step   what its positions count there
    /// @param places that aren't mirrored
    int add(int mesh, SbVec3d const& stand, double step, std::vector<GltfTransform> const& places);

private:
    int addAccessor(std::vector<float> const& numbers, std::size_t count, char const* type);

    GltfDocument& document;
    std::optional<int> view;
};
