#pragma once

#include <Inventor/SbVec3f.h>
#include <vector>

class SoNode;
class SoPath;

/// The points of the shapes in a scene, in its coordinates: a picture is fitted to them, more tightly than to
/// their box.
namespace DrawnPoints
{

/// All that switches let through, at all levels of detail.
std::vector<SbVec3f> of(SoNode* scene);

/// The same below the last node of a path.
std::vector<SbVec3f> of(SoPath* path);

} // namespace DrawnPoints
