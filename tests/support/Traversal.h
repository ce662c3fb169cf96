#pragma once

class SoNode;

/// Measures a scene, takes it apart into triangles and writes it, as a host does that trusts its nodes.
/// @return the number of triangles
int traverse(SoNode* root);
