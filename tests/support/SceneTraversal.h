#pragma once

#include <cstddef>
#include <string>

class SoNode;

/// What a host does with a scene: asks for its box, searches and writes it, each by the toolkit's recursion.
/// @return the bytes that were written
std::size_t traverseScene(SoNode* root);

/// Takes a scene apart into triangles, as a host does that trusts its nodes. @return how many there are
int countTriangles(SoNode* root);

/// All that a host does with a scene besides: sends a ray through it, copies it, writes it as text and in the
/// binary format, reads both again and uses what it gets. The scene is made plain for that; see SceneWriter.
void useScene(SoNode* root);

/// Reads a scene that was written, and uses what it gets. @param written as text, in the binary format, or
/// VRML
void useWritten(std::string const& written);
