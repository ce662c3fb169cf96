#pragma once

#include "textures/DecodedPicture.h"

/// Pictures in the TIFF format, decoded by libtiff.
namespace TiffPicture
{

/// The first picture of a file: grey, grey and alpha, RGB or RGBA. Palettes, inks and other spaces of colours
/// become RGB, and numbers of other sizes bytes.
/// @throw PictureProblem
DecodedPicture decode(PictureBytes const& file);

} // namespace TiffPicture
