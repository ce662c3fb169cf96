#pragma once

#include "textures/DecodedPicture.h"

/// Pictures in the JPEG format, decoded by libjpeg.
namespace JpegPicture
{

/// Grey or RGB; inks become RGB. A damaged picture is taken as far as it goes, unless the damage has no end.
/// @throw PictureProblem
DecodedPicture decode(PictureBytes const& file);

} // namespace JpegPicture
