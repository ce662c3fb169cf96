#pragma once

#include "visual/FltVisualNode.h"

#include <cstddef>

/// Joins the meshes of a visual that look alike, so that fewer shapes are drawn.
namespace FltMeshMerger
{

/// The most corners of meshes that are joined, of all looks together. What stands side by side is joined
/// first, so that what is beside the picture needn't be drawn. Meshes that lie so far apart that floats don't
/// hold both aren't joined either.
constexpr std::size_t cornersOfPiece = 1 << 16;

/// Joins meshes across nodes that are always drawn together and never moved against each other. They move to
/// the topmost of these nodes, into its coordinates. The others are left out if nothing is left in them, and
/// no comment.
/// @param metresPerUnit of the coordinates around the root
void merge(FltVisualNode& root, double metresPerUnit);

} // namespace FltMeshMerger
