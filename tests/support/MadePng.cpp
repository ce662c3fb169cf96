#include "support/MadePictures.h"

#include <png.h>
#include <stdexcept>

using namespace MadePictures;

namespace
{

/// What is said of the pixels besides their values.
struct Kind {
    int type;
    int depth;
    bool isInterlaced = false;
    bool hasTransparency = false; ///< Of one grey or colour, or of some colours of the palette.
};

int channelsOf(int type)
{
    switch (type) {
    case PNG_COLOR_TYPE_GRAY_ALPHA:
        return 2;
    case PNG_COLOR_TYPE_RGB:
        return 3;
    case PNG_COLOR_TYPE_RGB_ALPHA:
        return 4;
    default:
        return 1;
    }
}

constexpr int transparentX = 3;
constexpr int transparentY = 4;

png_color colorOf(int index)
{
    return {static_cast<png_byte>(index * 3), static_cast<png_byte>(255 - index),
            static_cast<png_byte>(index * 7)};
}

png_byte alphaOf(int index)
{
    return static_cast<png_byte>(index % 5 * 60);
}

/// A pixel's value as stored: of 16 bits the upper byte is the sample.
int storedValue(Kind const& kind, int x, int y, int channel)
{
    return kind.depth == 16 ? sample(x, y, channel) << 8 | 0x9c : sample(x, y, channel, kind.depth);
}

void append(png_structp png, png_bytep bytes, std::size_t count)
{
    static_cast<std::string*>(::png_get_io_ptr(png))->append(reinterpret_cast<char const*>(bytes), count);
}

void setTransparency(png_structp png, png_infop info, Kind const& kind)
{
    constexpr int colors = 16;
    png_byte alphas[colors];
    for (int i = 0; i < colors; ++i)
        alphas[i] = alphaOf(i);
    auto const at = [&](int channel) {
        return static_cast<png_uint_16>(storedValue(kind, transparentX, transparentY, channel));
    };
    png_color_16 const one = {0, at(0), at(1), at(2), at(0)};
    bool const isPalette = kind.type == PNG_COLOR_TYPE_PALETTE;
    ::png_set_tRNS(png, info, isPalette ? alphas : nullptr, isPalette ? colors : 0,
                   isPalette ? nullptr : &one);
}

std::string fileOf(Kind const& kind)
{
    std::string bytes;
    png_structp png = ::png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = ::png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): libpng's way to report an error
        throw std::runtime_error("cannot make a PNG picture");
    ::png_set_write_fn(png, &bytes, append, nullptr);
    ::png_set_IHDR(png, info, width, height, kind.depth, kind.type,
                   kind.isInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                   PNG_FILTER_TYPE_DEFAULT);
    png_color colors[256];
    for (int i = 0; i < 256; ++i)
        colors[i] = colorOf(i);
    if (kind.type == PNG_COLOR_TYPE_PALETTE)
        ::png_set_PLTE(png, info, colors, 1 << kind.depth);
    if (kind.hasTransparency)
        setTransparency(png, info, kind);
    ::png_write_info(png, info);
    ::png_set_packing(png);
    int const passes = ::png_set_interlace_handling(png);
    int const channels = channelsOf(kind.type);
    for (int pass = 0; pass < passes; ++pass)
        for (int y = 0; y < height; ++y) {
            std::string row;
            for (int i = 0; i < width * channels; ++i) {
                int const value = storedValue(kind, i / channels, y, i % channels);
                row += kind.depth == 16 ? big16(value) : std::string(1, byteOf(value));
            }
            ::png_write_row(png, reinterpret_cast<png_const_bytep>(row.data()));
        }
    ::png_write_end(png, info);
    ::png_destroy_write_struct(&png, &info);
    return bytes;
}

/// Whether a pixel has the one grey or colour that counts as transparent.
bool isTransparent(Kind const& kind, int x, int y)
{
    for (int channel = 0; channel < channelsOf(kind.type); ++channel)
        if (storedValue(kind, x, y, channel) != storedValue(kind, transparentX, transparentY, channel))
            return false;
    return true;
}

int shownValue(Kind const& kind, int x, int y, int channel)
{
    int const stored = storedValue(kind, x, y, 0);
    if (kind.type == PNG_COLOR_TYPE_PALETTE) {
        png_color const color = colorOf(stored);
        int const values[] = {color.red, color.green, color.blue, stored < 16 ? alphaOf(stored) : 255};
        return values[channel];
    }
    if (channel >= channelsOf(kind.type))
        return isTransparent(kind, x, y) ? 0 : 255;
    return kind.depth == 16 ? sample(x, y, channel) : spread(storedValue(kind, x, y, channel), kind.depth);
}

MadePicture make(std::string const& name, Kind const& kind)
{
    int const colors = kind.type == PNG_COLOR_TYPE_PALETTE ? 3 : channelsOf(kind.type);
    int const components = colors + (kind.hasTransparency ? 1 : 0);
    auto const value = [&](int x, int y, int channel) { return shownValue(kind, x, y, channel); };
    return {name + ".png", fileOf(kind), width, height, components, fromBottom(components, value)};
}

} // namespace

std::vector<MadePicture> MadePictures::png()
{
    std::vector<MadePicture> pictures;
    for (bool const isInterlaced : {false, true}) {
        std::string const way = isInterlaced ? "_interlaced" : "";
        for (int const depth : {1, 2, 4, 8, 16})
            pictures.push_back(
                make("grey" + std::to_string(depth) + way, {PNG_COLOR_TYPE_GRAY, depth, isInterlaced}));
        for (int const depth : {1, 2, 4, 8})
            pictures.push_back(
                make("palette" + std::to_string(depth) + way, {PNG_COLOR_TYPE_PALETTE, depth, isInterlaced}));
        for (int const depth : {8, 16}) {
            std::string const end = std::to_string(depth) + way;
            pictures.push_back(make("grey_alpha" + end, {PNG_COLOR_TYPE_GRAY_ALPHA, depth, isInterlaced}));
            pictures.push_back(make("rgb" + end, {PNG_COLOR_TYPE_RGB, depth, isInterlaced}));
            pictures.push_back(make("rgba" + end, {PNG_COLOR_TYPE_RGB_ALPHA, depth, isInterlaced}));
        }
    }
    pictures.push_back(make("clear_grey4", {PNG_COLOR_TYPE_GRAY, 4, false, true}));
    pictures.push_back(make("clear_grey8", {PNG_COLOR_TYPE_GRAY, 8, false, true}));
    pictures.push_back(make("clear_palette4", {PNG_COLOR_TYPE_PALETTE, 4, false, true}));
    pictures.push_back(make("clear_palette8", {PNG_COLOR_TYPE_PALETTE, 8, false, true}));
    pictures.push_back(make("clear_rgb8", {PNG_COLOR_TYPE_RGB, 8, false, true}));
    pictures.push_back(make("clear_rgb16", {PNG_COLOR_TYPE_RGB, 16, false, true}));
    return pictures;
}
