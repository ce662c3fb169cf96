#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the TIFF format, with the eyes of the toolkit's image library.
namespace TiffImage
{

/// The size of the picture, or of its tiles where these are larger; nothing if the file can't be read as one.
ImageClaim claimOf(ImageFile& file);

/// Whether the library survives it. It forgets that it has given back its memory when a picture with
/// transparency can't be decoded to its end, so such a picture is decoded once before.
bool isSound(ImageFile& file);

} // namespace TiffImage
