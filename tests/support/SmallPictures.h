#pragma once

#include <array>
#include <functional>
#include <string>

/// Small pictures in the formats of textures, for tests of what happens when they are damaged.
namespace SmallPictures
{

/// A picture in the SGI format that isn't compressed, plain grey in three channels.
/// @param side how many pixels wide and high
std::string plainSgi(unsigned char side, unsigned char grey = 128);

/// A picture in the SGI format that isn't compressed, in colours with transparency.
/// @param side  how many pixels wide and high; below 256
/// @param pixel red, green, blue and alpha of each, x from the left and y from below
std::string clearSgi(int side, std::function<std::array<unsigned char, 4>(int x, int y)> const& pixel);

/// A picture in the SGI format whose rows are compressed: a copied stretch and a run each.
/// @param width above 1 and below 100
std::string compressedSgi(int width, int height, int channels);

/// A compressed picture in the TGA format, of 24 bits each pixel, with a palette that nobody uses.
std::string compressedTga(int width, int height);

/// Writes a compressed picture in the TIFF format.
/// @param channels 1 to 4; four have transparency
void writeTiff(std::string const& path, int width, int height, int channels);

/// Writes a picture in the JPEG format.
/// @param isProgressive in several scans, each over the whole picture
void writeJpeg(std::string const& path, int width, int height, bool isProgressive);

/// Writes a picture in the PNG format, with transparency.
void writePng(std::string const& path, int width, int height);

} // namespace SmallPictures
