#pragma once

#include <string>

class SoNode;

/// What the toolkit writes of a scene graph, in its ASCII or its binary format.
std::string writtenScene(SoNode* root, bool isBinary);

/// A scene graph as text, for exact comparison: the toolkit's own ASCII format without its first line and its
/// blank lines. Types, names, all fields that aren't at their defaults, and nodes that stand in several
/// places (DEF and USE).
std::string sceneText(SoNode* root);
