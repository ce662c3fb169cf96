#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the SGI format, with the eyes of the toolkit's image library.
namespace SgiImage
{

/// The size of the picture; nothing if the file is too short to tell.
ImageClaim claimOf(ImageFile& file);

/// Whether the channels and the rows of the picture fit into the buffers of the library, which takes them for
/// right.
bool isSound(ImageFile& file);

} // namespace SgiImage
