#pragma once

#include "textures/DecodedPicture.h"

/// Pictures in the GIF format, decoded by giflib.
namespace GifPicture
{

/// RGBA. Where a file has several pictures, each is laid over those before, and what comes out is taken.
/// @throw PictureProblem
DecodedPicture decode(PictureBytes const& file);

} // namespace GifPicture
