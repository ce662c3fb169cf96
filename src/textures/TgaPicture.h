#pragma once

#include "textures/DecodedPicture.h"

#include <string>

/// Pictures in the TGA format.
namespace TgaPicture
{

/// Whether a file has the name of such a picture; its bytes don't tell.
bool isNamed(std::string const& name);

/// True colours of 16, 24 or 32 bits, palettes of them and grey, plain or in runs; from any corner.
/// @throw PictureProblem
DecodedPicture decode(PictureBytes const& file);

} // namespace TgaPicture
