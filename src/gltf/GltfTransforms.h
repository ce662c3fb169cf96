#pragma once

#include "gltf/GltfJson.h"

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbDPRotation.h>
#include <Inventor/SbVec3d.h>
#include <vector>

/// What a node of glTF does to what stands in it: a scale, a rotation and a translation, in this order.
struct GltfTransform {
    SbVec3d translation{0, 0, 0};
    SbDPRotation rotation = SbDPRotation::identity();
    SbVec3d scale{1, 1, 1};

    /// Adds the members to a node, but for those that change nothing.
    void addTo(GltfJson& node) const;
};

/// A matrix as what nodes of glTF can do. Their own matrices mustn't shear, and readers take them apart.
struct GltfTransforms {
    /// @param matrix of finite numbers, without perspective
    explicit GltfTransforms(SbDPMatrix const& matrix);

    /// The outermost first: none for a matrix that changes nothing, one for most, and two where it shears.
    std::vector<GltfTransform> nodes;

    /// Whether the matrix flattens what is in it, so that it has to be worked into that. There are no nodes
    /// then.
    bool isSingular = false;
};
