#include "support/MadePictures.h"

using namespace MadePictures;

namespace
{

enum Type { palette = 1, colors = 2, grey = 3 };

struct Kind {
    Type type;
    int bits;
    bool isPacked = false;
    int descriptor = 0;
    int paletteBits = 0;
};

constexpr int bitFromRight = 0x10;
constexpr int bitFromTop = 0x20;
constexpr int firstColor = 2;
constexpr int lastColor = 31;

/// A colour as stored: blue first, or five bits each.
std::string color(int red, int green, int blue, int alpha, int bits)
{
    if (bits == 16)
        return little16((alpha >> 7) << 15 | (red >> 3) << 10 | (green >> 3) << 5 | blue >> 3);
    std::string const bytes = {byteOf(blue), byteOf(green), byteOf(red), byteOf(alpha)};
    return bytes.substr(0, static_cast<std::size_t>(bits / 8));
}

int paletteValue(int index, int channel)
{
    int const values[] = {index * 5, 255 - index * 3, index * 8, index * 9 & 0xff};
    return values[channel];
}

int indexAt(int x, int y)
{
    return firstColor + sample(x, y, 0) % (lastColor - firstColor + 1);
}

std::string pixel(Kind const& kind, int x, int y)
{
    if (kind.type == palette)
        return std::string(1, byteOf(indexAt(x, y)));
    if (kind.type == grey)
        return std::string(1, byteOf(sample(x, y, 0)));
    return color(sample(x, y, 0), sample(x, y, 1), sample(x, y, 2), sample(x, y, 3), kind.bits);
}

/// Which pixels of a row a packed picture repeats: those from here on are all alike.
constexpr int repeated = 5;

int columnOf(Kind const& kind, int x)
{
    return kind.isPacked && x > repeated ? repeated : x;
}

std::string fileOf(Kind const& kind)
{
    bool const hasPalette = kind.paletteBits > 0;
    int const count = hasPalette ? lastColor - firstColor + 1 : 0;
    std::string bytes = byteOf(3) + std::string(1, byteOf(hasPalette ? 1 : 0)) +
                        byteOf(kind.type | (kind.isPacked ? 8 : 0)) + little16(hasPalette ? firstColor : 0) +
                        little16(count) + byteOf(kind.paletteBits) + little16(0) + little16(0) +
                        little16(width) + little16(height) + byteOf(kind.bits) + byteOf(kind.descriptor) +
                        "abc";
    for (int i = 0; i < count; ++i)
        bytes += color(paletteValue(firstColor + i, 0), paletteValue(firstColor + i, 1),
                       paletteValue(firstColor + i, 2), paletteValue(firstColor + i, 3), kind.paletteBits);
    for (int row = 0; row < height; ++row) {
        int const y = (kind.descriptor & bitFromTop) != 0 ? row : height - 1 - row;
        auto const at = [&](int column) {
            bool const isMirrored = (kind.descriptor & bitFromRight) != 0;
            return pixel(kind, isMirrored ? width - 1 - column : column, y);
        };
        if (kind.isPacked) {
            bytes += byteOf(repeated - 1);
            for (int column = 0; column < repeated; ++column)
                bytes += at(column);
            bytes += byteOf(0x80 | (width - repeated - 1)) + at(repeated);
        } else {
            for (int column = 0; column < width; ++column)
                bytes += at(column);
        }
    }
    return bytes;
}

int shownValue(Kind const& kind, int x, int y, int channel)
{
    int const column = columnOf(kind, x);
    bool const isPalette = kind.type == palette;
    int const value = isPalette ? paletteValue(indexAt(column, y), channel) : sample(column, y, channel);
    int const bits = isPalette ? kind.paletteBits : kind.bits;
    if (bits != 16)
        return value;
    return channel == 3 ? (value >> 7) * 255 : value >> 3 << 3 | value >> 5;
}

MadePicture make(std::string const& name, Kind const& kind,
                 MadePicture::Toolkit toolkit = MadePicture::Toolkit::agrees)
{
    int const bits = kind.type == palette ? kind.paletteBits : kind.bits;
    int const components = kind.type == grey                                           ? 1
                           : bits == 32 || (bits == 16 && (kind.descriptor & 15) == 1) ? 4
                                                                                       : 3;
    auto const value = [&](int x, int y, int channel) { return shownValue(kind, x, y, channel); };
    return {name + ".tga", fileOf(kind), width, height, components, fromBottom(components, value), toolkit};
}

} // namespace

std::vector<MadePicture> MadePictures::tga()
{
    using Toolkit = MadePicture::Toolkit;
    return {
        make("rgb", {colors, 24}),
        make("rgb_packed", {colors, 24, true}),
        make("rgba", {colors, 32, false, 8}),
        make("rgba_packed", {colors, 32, true, 8}),
        make("rgb_with_palette", {colors, 24, false, 0, 24}),
        make("rgb_packed_with_palette", {colors, 24, true, 0, 24}),
        make("rgb_from_top", {colors, 24, false, bitFromTop}, Toolkit::differs),
        make("rgb_packed_from_top", {colors, 24, true, bitFromTop}, Toolkit::differs),
        make("rgb_from_right", {colors, 24, false, bitFromRight}, Toolkit::differs),
        make("rgb16", {colors, 16}, Toolkit::differs),
        make("rgb16_packed", {colors, 16, true}, Toolkit::differs),
        make("rgba16", {colors, 16, false, 1}, Toolkit::differs),
        make("grey", {grey, 8}, Toolkit::refuses),
        make("grey_packed", {grey, 8, true}, Toolkit::refuses),
        make("palette", {palette, 8, false, 0, 24}, Toolkit::refuses),
        make("palette_packed", {palette, 8, true, 0, 24}, Toolkit::refuses),
        make("palette32", {palette, 8, false, 8, 32}, Toolkit::refuses),
        make("palette16", {palette, 8, false, 0, 16}, Toolkit::refuses),
    };
}
