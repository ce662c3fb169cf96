#pragma once

#include "shot/DrawingStyle.h"
#include "support/Picture.h"

class SoNode;
class SoPerspectiveCamera;

/// Draws scenes off screen.
namespace SceneDrawing
{

/// Draws a scene in the light of a sun that stands behind the camera's left shoulder.
/// @return four channels if the style is transparent
/// @throw ToolError if there is no way to draw
Picture draw(SoNode* scene, SoPerspectiveCamera* camera, DrawingStyle const& style);

/// Whether a picture shows nothing but its backdrop.
bool isEmpty(Picture const& picture, DrawingStyle const& style);

/// Draws any nodes as they are: each pixel is the mean of a finer picture's.
/// @param fine how many pixels of the finer picture lie side by side in one
Picture drawNodes(SoNode* nodes, int width, int height, int fine);

} // namespace SceneDrawing
