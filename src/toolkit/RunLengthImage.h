#pragma once

class ImageFile;

/// Follows the run lengths of pictures as the toolkit's image library does, which doesn't always look whether
/// they stay in the file and in the row.
namespace RunLengthImage
{

/// Whether the rows of a picture in the SGI format can be read, compressed or not.
bool isSoundSgi(ImageFile& file);

/// Whether the pixels of a picture in the TGA format can be read, compressed or not.
bool isSoundTga(ImageFile& file);

} // namespace RunLengthImage
