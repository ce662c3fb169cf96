#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>
#include <vector>

namespace
{

PictureProblem damaged(char const* words)
{
    return PictureProblem(std::string("is a damaged TGA picture (") + words + ")");
}

constexpr std::size_t sizeOfHead = 18;

struct Head {
    enum Kind : unsigned { palette = 1, colors = 2, grey = 3 };

    explicit Head(PictureBytes const& file)
        : kind(file.byte(2) & 7U), isPacked((file.byte(2) & 8U) != 0), hasPalette(file.byte(1) == 1),
          firstColor(file.little16(3)), paletteLength(hasPalette ? file.little16(5) : 0),
          paletteBits(hasPalette ? file.byte(7) : 0), width(file.little16(12)), height(file.little16(14)),
          bits(file.byte(16)), isFromRight((file.byte(17) & 0x10U) != 0),
          isFromTop((file.byte(17) & 0x20U) != 0), hasAlphaBit((file.byte(17) & 0xfU) == 1),
          paletteAt(sizeOfHead + file.byte(0)), pixelsAt(paletteAt + paletteLength * (paletteBits / 8))
    {
        bool const isColor = bits == 16 || bits == 24 || bits == 32;
        bool const isPaletteColor = paletteBits == 16 || paletteBits == 24 || paletteBits == 32;
        bool const hasSoundPalette = file.byte(1) == (isPaletteColor ? 1U : 0U);
        bool const isSound = file.size() >= sizeOfHead && hasSoundPalette && file.byte(2) <= 11 &&
                             (file.byte(17) & 0xc0U) == 0 &&
                             (kind == palette  ? bits == 8 && hasPalette
                              : kind == colors ? isColor
                                               : kind == grey && bits == 8);
        if (!isSound)
            throw PictureProblem("is no TGA picture of a kind that is read");
    }

    unsigned kind;
    bool isPacked;
    bool hasPalette;
    std::size_t firstColor;
    std::size_t paletteLength;
    std::size_t paletteBits;
    std::size_t width;
    std::size_t height;
    std::size_t bits;
    bool isFromRight;
    bool isFromTop;
    bool hasAlphaBit; ///< Of colours in 16 bits.
    std::size_t paletteAt;
    std::size_t pixelsAt;

    std::size_t bytesOfValue() const { return bits / 8; }
    std::size_t bitsOfColor() const { return kind == palette ? paletteBits : bits; }
    std::size_t components() const
    {
        return kind == grey ? 1 : bitsOfColor() == 32 || (bitsOfColor() == 16 && hasAlphaBit) ? 4 : 3;
    }
};

/// Spreads five bits over eight.
unsigned char spread(unsigned bits)
{
    return static_cast<unsigned char>((bits & 31U) << 3 | (bits & 31U) >> 2);
}

/// Makes the bytes of a pixel from a colour as stored.
void putColor(PictureBytes const& file, std::size_t at, std::size_t bits, std::size_t components,
              unsigned char* to)
{
    if (bits == 16) {
        unsigned const color = file.little16(at);
        to[0] = spread(color >> 10);
        to[1] = spread(color >> 5);
        to[2] = spread(color);
        if (components == 4)
            to[3] = (color & 0x8000U) != 0 ? 0xff : 0;
        return;
    }
    constexpr std::array<std::size_t, 4> stored = {2, 1, 0, 3}; // blue, green, red
    for (std::size_t i = 0; i < components; ++i)
        to[i] = static_cast<unsigned char>(file.byte(at + (components == 1 ? 0 : stored[i])));
}

/// Gives the place of each stored value in turn, from packets that copy or repeat.
class Values
{
public:
    Values(PictureBytes const& file, Head const& head)
        : file(file), size(head.bytesOfValue()), isPacked(head.isPacked), at(head.pixelsAt)
    {
    }

    std::size_t next()
    {
        if (left == 0)
            begin();
        --left;
        if (!file.holds(at, size))
            throw damaged("it ends before its last pixel");
        std::size_t const place = at;
        if (!isRepeated || left == 0)
            at += size;
        return place;
    }

private:
    void begin()
    {
        left = 1;
        if (!isPacked)
            return;
        left = (file.byte(at) & 0x7fU) + 1;
        isRepeated = (file.byte(at) & 0x80U) != 0;
        ++at;
    }

    PictureBytes const& file;
    std::size_t size;
    bool isPacked;
    std::size_t at;
    std::size_t left = 0; ///< In this packet.
    bool isRepeated = false;
};

} // namespace

bool PictureFormats::isNamedTga(std::string const& name)
{
    constexpr std::string_view ending = ".tga";
    auto const isSame = [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); };
    return name.size() >= ending.size() &&
           std::equal(ending.begin(), ending.end(), name.end() - std::ptrdiff_t(ending.size()), isSame);
}

DecodedPicture PictureFormats::decodeTga(PictureBytes const& file)
{
    Head const head(file);
    std::size_t const components = head.components();
    DecodedPicture picture(head.width, head.height, components, file);
    Values values(file, head);
    for (std::size_t y = 0; y < head.height; ++y) {
        unsigned char* const row = head.isFromTop ? picture.rowFromTop(y) : picture.row(y);
        for (std::size_t x = 0; x < head.width; ++x) {
            unsigned char* const to = row + (head.isFromRight ? head.width - 1 - x : x) * components;
            std::size_t const at = values.next();
            if (head.kind != Head::palette) {
                putColor(file, at, head.bits, components, to);
                continue;
            }
            std::size_t const color = file.byte(at) - head.firstColor;
            if (file.byte(at) < head.firstColor || color >= head.paletteLength)
                throw damaged("a pixel has a colour that isn't there");
            putColor(file, head.paletteAt + color * (head.paletteBits / 8), head.paletteBits, components, to);
        }
    }
    return picture;
}
