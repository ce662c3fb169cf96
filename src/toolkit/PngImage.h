#pragma once

class ImageFile;

/// A picture in the PNG format, with the eyes of the toolkit's image library.
namespace PngImage
{

/// Whether the chunks of the picture lead to its end. Where the file ends before, the library goes on to read
/// what isn't there, and doesn't come back.
bool isSound(ImageFile& file);

} // namespace PngImage
