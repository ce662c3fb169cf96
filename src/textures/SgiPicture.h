#pragma once

#include "textures/DecodedPicture.h"

/// Pictures in the SGI format, with endings such as ".rgb", ".rgba", ".int", ".bw" and ".sgi".
namespace SgiPicture
{

/// One to four channels of one or two bytes, plain or in runs. Of two bytes the first is taken.
/// @throw PictureProblem
DecodedPicture decode(PictureBytes const& file);

} // namespace SgiPicture
