#pragma once

#include <cstddef>
#include <vector>

/// Finds the circles of a graph: the largest groups of nodes each of which leads to all others of its group.
namespace ReferenceCircles
{

/// Where a node leads to, by numbers.
using Edges = std::vector<std::vector<std::size_t>>;

/// The groups, most of which are single nodes. A group comes after all that it leads to; the nodes in it have
/// ascending numbers.
std::vector<std::vector<std::size_t>> groupsOf(Edges const& edges);

} // namespace ReferenceCircles
