#pragma once

#include <Inventor/SbBox3f.h>

class SbViewportRegion;
class SoNode;
class SoPath;

/// The box around the points of shapes that are drawn. It is smaller than that of the toolkit, which turns
/// the boxes of parts instead of their points.
namespace DrawnBox
{

/// @return an empty box if nothing is drawn
SbBox3f of(SoNode* scene, SbViewportRegion const& region);
SbBox3f of(SoPath* path, SbViewportRegion const& region);

} // namespace DrawnBox
