#pragma once

#include "shot/DrawingStyle.h"

#include <string>

class SoNode;
class SoPerspectiveCamera;

/// Finds out why a picture shows nothing but its backdrop. Each function opens switches and levels of detail
/// of the scene, which isn't what was loaded any more then.
namespace EmptyPicture
{

/// Why a scene has no points that could be drawn.
/// @return a sentence that begins in small letters: what it is, and what to do
std::string reasonWithoutPoints(SoNode* scene);

/// Why a scene with such points is not to be seen.
/// @return as above
std::string reason(SoNode* scene, SoPerspectiveCamera* camera, DrawingStyle style);

} // namespace EmptyPicture
