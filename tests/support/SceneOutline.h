#pragma once

#include <string>

class SoNode;

/// The shape of a scene graph, one node a line with its children indented below it: type, name, and for an
/// indexed face set its coordinate indices and, behind a bar, its material indices. "null" for no node.
std::string sceneOutline(SoNode* node);
