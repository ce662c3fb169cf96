#pragma once

#include "support/Picture.h"

#include "textures/PicturePixels.h"

#include <cstdio>
#include <string>

/// Writes a picture as PNG. A stream that takes no more is the caller's to report.
/// @return an empty text, or why the picture can't be written
std::string writePng(Picture const& picture, FILE* file);

/// The same for a texture, which may be grey.
std::string writePng(PicturePixels const& pixels, FILE* file);
