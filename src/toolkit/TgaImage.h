#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the TGA format, with the eyes of the toolkit's image library.
namespace TgaImage
{

/// The size of the picture; nothing if the file is too short to tell.
ImageClaim claimOf(ImageFile& file);

/// Whether the packets of a compressed picture last to its end. Where they don't, the library ends the
/// process.
bool isSound(ImageFile& file);

} // namespace TgaImage
