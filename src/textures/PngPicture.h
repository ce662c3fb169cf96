#pragma once

#include "textures/DecodedPicture.h"

/// Pictures in the PNG format, decoded by libpng.
namespace PngPicture
{

/// Grey, grey and alpha, RGB or RGBA: palettes become colours, fewer bits than 8 are spread, and more are
/// cut; a colour that counts as transparent makes alpha. A file without its end isn't taken.
/// @throw PictureProblem
DecodedPicture decode(PictureBytes const& file);

} // namespace PngPicture
