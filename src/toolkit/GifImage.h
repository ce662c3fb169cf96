#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the GIF format, with the eyes of the toolkit's image library.
namespace GifImage
{

/// The size of the picture; nothing if the file is too short to tell.
ImageClaim claimOf(ImageFile& file);

/// Whether the blocks of the picture lead to its end, and all its parts lie in it. The library doesn't close
/// a file that it can't read to its end.
bool isSound(ImageFile& file);

} // namespace GifImage
