#pragma once

#include <string>

/// Small pictures in the formats of textures, for tests of what happens when they are damaged.
namespace SmallPictures
{

/// A picture in the SGI format whose rows are compressed: a copied stretch and a run each.
/// @param width above 1 and below 100
std::string compressedSgi(int width, int height, int channels);

/// A compressed picture in the TGA format, of 24 bits each pixel, with a palette that nobody uses.
std::string compressedTga(int width, int height);

/// Writes a compressed picture in the TIFF format.
/// @param channels 1 to 4; four have transparency
void writeTiff(std::string const& path, int width, int height, int channels);

} // namespace SmallPictures
