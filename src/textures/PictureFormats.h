#pragma once

#include "textures/DecodedPicture.h"

#include <string>

/// The formats of pictures that are read, each in a source of its own: "GifPicture.cpp" and so on. Each
/// function throws a PictureProblem where a file isn't read.
namespace PictureFormats
{

/// By giflib. RGBA. Where a file has several pictures, each is laid over those before, and what comes out is
/// taken.
DecodedPicture decodeGif(PictureBytes const& file);

/// By libjpeg. Grey or RGB; inks become RGB. A damaged picture is taken as far as it goes, with words
/// about the damage, unless that has no end.
DecodedPicture decodeJpeg(PictureBytes const& file);

/// By libpng. Grey, grey and alpha, RGB or RGBA: palettes become colours, fewer bits than 8 are spread, and
/// more are cut; a colour that counts as transparent makes alpha. A file without its end isn't taken.
DecodedPicture decodePng(PictureBytes const& file);

/// Files with endings such as ".rgb", ".rgba", ".int", ".bw" and ".sgi". One to four channels of one or two
/// bytes, plain or in runs. Of two bytes the first is taken.
DecodedPicture decodeSgi(PictureBytes const& file);

/// True colours of 16, 24 or 32 bits, palettes of them and grey, plain or in runs; from any corner.
DecodedPicture decodeTga(PictureBytes const& file);

/// By libtiff. The first picture of a file: grey, grey and alpha, RGB or RGBA. Palettes, inks and other
/// spaces of colours become RGB, and numbers of other sizes bytes.
DecodedPicture decodeTiff(PictureBytes const& file);

/// Whether a file has the name of a TGA picture; its bytes don't tell.
bool isNamedTga(std::string const& name);

} // namespace PictureFormats
