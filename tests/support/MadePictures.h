#pragma once

#include <functional>
#include <string>
#include <vector>

/// A small picture in a file as some program writes it, and what it shows.
struct MadePicture {
    /// What the toolkit's own image library does with the file.
    enum class Toolkit { agrees, differs, refuses };

    std::string name;  ///< Of the file, with its ending.
    std::string bytes; ///< Of the file.
    int width;
    int height;
    int components;
    std::string pixels; ///< The bottom row first.
    Toolkit toolkit = Toolkit::agrees;
    int tolerance = 0; ///< How much each byte may be off, where the format loses some.
};

void PrintTo(MadePicture const& picture, std::ostream* out);

/// Pictures in each kind of each format: colours, depths, palettes, orders of rows and bytes, compressions.
namespace MadePictures
{

std::vector<MadePicture> png();
std::vector<MadePicture> jpeg();
std::vector<MadePicture> tiff();
std::vector<MadePicture> gif();
std::vector<MadePicture> sgi();
std::vector<MadePicture> tga();
std::vector<MadePicture> all();

/// The name of a picture, in letters that the name of a test may have.
std::string nameOfTest(MadePicture const& picture);

/// Enough for each pass of an interlaced picture.
constexpr int width = 9;
constexpr int height = 10;

/// What the pictures show: a value for each channel of each pixel, y from the top.
int sample(int x, int y, int channel);

/// A value of fewer bits, from the same.
int sample(int x, int y, int channel, int bits);

/// What a pixel has in each channel.
using Value = std::function<int(int x, int y, int channel)>;

/// Values as bytes, pixel by pixel; from the top row on, or from the bottom.
std::string fromTop(int channels, Value const& value);
std::string fromBottom(int channels, Value const& value);

/// Spreads a value over eight bits.
int spread(int value, int bits);

/// One byte; two bytes or four in either order.
char byteOf(int number);
std::string big16(int number);
std::string big32(std::size_t number);
std::string little16(int number);

} // namespace MadePictures
