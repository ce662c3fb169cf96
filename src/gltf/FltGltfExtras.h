#pragma once

#include "globe/FltGlobeFrame.h"
#include "gltf/GltfJson.h"
#include "loader/FltVisual.h"

/// What nodes of a glTF file tell of themselves in `extras`, as docs/gltf.md lists it.
namespace FltGltfExtras
{

/// What a node tells of its own.
/// @param zero what its places count from
GltfJson of(FltVisualNode const& node, SbVec3d const& zero);

/// What a joint tells, in the units and degrees of the node: `joint`.
GltfJson of(FltVisualJoint const& joint);

/// What the node at the top tells of the whole: `origin` and `files`.
/// @param subtracted from all places, in the units of the file; z goes up
GltfJson ofWhole(FltVisual const& visual, SbVec3d const& subtracted);

/// What the node at the top tells of its place on the globe: `globe`.
GltfJson of(FltGlobeFrame const& frame);

} // namespace FltGltfExtras
