#pragma once

#include <string>
#include <vector>

class SoNode;
class SoPath;

/// Looks for nodes of a scene by name.
namespace NodeSearch
{

/// The way to the first node of a name, if possible one that no switch hides.
/// @return a path with a reference that is the caller's; null if no node has the name
SoPath* find(SoNode* scene, std::string const& name);

/// Names in the scene that are like one that isn't there, the likest first, a few at most.
std::vector<std::string> namesLike(SoNode* scene, std::string const& name);

} // namespace NodeSearch
