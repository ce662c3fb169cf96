#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the PIC format, with the eyes of the toolkit's image library.
namespace PicImage
{

/// The size of the picture; nothing if the file is too short to tell.
ImageClaim claimOf(ImageFile& file);

/// Whether the file is as long as its picture.
bool isSound(ImageFile& file);

} // namespace PicImage
