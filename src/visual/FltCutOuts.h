#pragma once

#include "textures/FltTexture.h"
#include "visual/FltVisualNode.h"

#include <memory>
#include <vector>

/// Finds the meshes that are cut out of their pictures, as leaves and fences are.
namespace FltCutOuts
{

/// Marks the meshes whose colours are opaque, and whose pictures are there or not pixel by pixel.
/// @param textures that the meshes name. A mesh without a picture stays as it is.
void mark(std::shared_ptr<FltVisualNode> const& root, std::vector<FltTexture> const& textures);

} // namespace FltCutOuts
