#pragma once

#include "toolkit/ImageClaim.h"

class ImageFile;

/// A picture in the JPEG format, with the eyes of the toolkit's image library.
namespace JpegImage
{

/// The size of the picture; nothing if the file can't be read as one.
ImageClaim claimOf(ImageFile& file);

/// Whether the picture comes in no more scans than one has use for. The library goes over all of its pixels
/// for each, and a scan may be a few bytes long.
bool isSound(ImageFile& file);

} // namespace JpegImage
