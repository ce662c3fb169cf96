#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the PNG format, with the eyes of the toolkit's image library.
namespace PngImage
{

/// The size of the picture; nothing if the file is too short to tell.
ImageClaim claimOf(ImageFile& file);

/// Whether the chunks of the picture lead to its end. Where the file ends before, the library goes on to read
/// what isn't there, and doesn't come back.
bool isSound(ImageFile& file);

} // namespace PngImage
