#include "support/MadePictures.h"

#include "support/ScratchFolder.h"

#include <fstream>
#include <iterator>
#include <tiffio.h>

using namespace MadePictures;

namespace
{

struct Kind {
    int channels = 3;
    int bits = 8;
    int colors = PHOTOMETRIC_RGB;
    int compression = COMPRESSION_NONE;
    char const* mode = "w";
    int alpha = -1; ///< Its kind, if the last channel is it.
    bool isInPlanes = false;
    int tile = 0; ///< Pixels each way.
    int orientation = ORIENTATION_TOPLEFT;
};

int storedValue(Kind const& kind, int x, int y, int channel)
{
    return kind.bits == 16 ? sample(x, y, channel) * 257 : sample(x, y, channel, kind.bits);
}

int paletteValue(int index, int channel)
{
    int const values[] = {index, 255 - index, index * 5 & 0xff};
    return values[channel];
}

/// Some pixels of a row, from left to right; beyond the picture zeros.
std::string packed(Kind const& kind, int left, int count, int y, int firstChannel, int channels)
{
    std::string bytes;
    int bits = 0;
    int filled = 0;
    for (int i = 0; i < count * channels; ++i) {
        int const x = left + i / channels;
        int const value = x < width && y < height ? storedValue(kind, x, y, firstChannel + i % channels) : 0;
        if (kind.bits == 16) {
            std::uint16_t const word = static_cast<std::uint16_t>(value); // in the machine's order
            bytes.append(reinterpret_cast<char const*>(&word), sizeof word);
            continue;
        }
        bits = bits << kind.bits | value;
        filled += kind.bits;
        if (filled == 8) {
            bytes += byteOf(bits);
            bits = filled = 0;
        }
    }
    if (filled > 0)
        bytes += byteOf(bits << (8 - filled));
    return bytes;
}

void setFields(TIFF* tiff, Kind const& kind)
{
    ::TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    ::TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    ::TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
    ::TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.channels);
    ::TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.colors);
    ::TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.isInPlanes ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    ::TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
    ::TIFFSetField(tiff, TIFFTAG_ORIENTATION, kind.orientation);
    if (kind.alpha >= 0) {
        auto const alpha = static_cast<std::uint16_t>(kind.alpha);
        ::TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
    }
    if (kind.colors == PHOTOMETRIC_PALETTE) {
        std::vector<std::uint16_t> palettes[3];
        for (int i = 0; i < 3 * (1 << kind.bits); ++i)
            palettes[i % 3].push_back(static_cast<std::uint16_t>(paletteValue(i / 3, i % 3) * 257));
        ::TIFFSetField(tiff, TIFFTAG_COLORMAP, palettes[0].data(), palettes[1].data(), palettes[2].data());
    }
    if (kind.tile > 0) {
        ::TIFFSetField(tiff, TIFFTAG_TILEWIDTH, kind.tile);
        ::TIFFSetField(tiff, TIFFTAG_TILELENGTH, kind.tile);
    } else {
        ::TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 3);
    }
}

void writeTile(TIFF* tiff, Kind const& kind)
{
    std::string bytes;
    for (int y = 0; y < kind.tile; ++y)
        bytes += packed(kind, 0, kind.tile, y, 0, kind.channels);
    ::TIFFWriteTile(tiff, bytes.data(), 0, 0, 0, 0);
}

std::string fileOf(Kind const& kind)
{
    ScratchFolder const folder;
    std::string const path = folder / "a.tif";
    TIFF* const tiff = ::TIFFOpen(path.c_str(), kind.mode);
    setFields(tiff, kind);
    int const planes = kind.isInPlanes ? kind.channels : 1;
    if (kind.tile > 0) {
        writeTile(tiff, kind);
    } else {
        for (int plane = 0; plane < planes; ++plane)
            for (int y = 0; y < height; ++y) {
                std::string row = packed(kind, 0, width, y, plane, kind.channels / planes);
                ::TIFFWriteScanline(tiff, row.data(), static_cast<std::uint32_t>(y),
                                    static_cast<std::uint16_t>(plane));
            }
    }
    ::TIFFClose(tiff);
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

int shownValue(Kind const& kind, int x, int y, int channel)
{
    int const stored = storedValue(kind, x, y, channel);
    int const shown = kind.bits == 16 ? sample(x, y, channel) : spread(stored, kind.bits);
    switch (kind.colors) {
    case PHOTOMETRIC_PALETTE:
        return paletteValue(storedValue(kind, x, y, 0), channel);
    case PHOTOMETRIC_MINISWHITE:
        return 255 - shown;
    case PHOTOMETRIC_SEPARATED:
        return (255 - stored) * (255 - storedValue(kind, x, y, 3)) / 255;
    default:
        return shown;
    }
}

MadePicture make(std::string const& name, Kind const& kind,
                 MadePicture::Toolkit toolkit = MadePicture::Toolkit::agrees)
{
    bool const isGrey = kind.colors == PHOTOMETRIC_MINISBLACK || kind.colors == PHOTOMETRIC_MINISWHITE;
    int const components = isGrey ? kind.channels : std::max(3, kind.alpha >= 0 ? 4 : 3);
    auto const value = [&](int x, int y, int channel) { return shownValue(kind, x, y, channel); };
    bool const isFromBottom = kind.orientation == ORIENTATION_BOTLEFT;
    return {name + ".tif", fileOf(kind),
            width,         height,
            components,    isFromBottom ? fromTop(components, value) : fromBottom(components, value),
            toolkit};
}

} // namespace

std::vector<MadePicture> MadePictures::tiff()
{
    using Toolkit = MadePicture::Toolkit;
    constexpr int black = PHOTOMETRIC_MINISBLACK;
    constexpr int rgb = PHOTOMETRIC_RGB;
    constexpr int free = EXTRASAMPLE_UNASSALPHA;
    constexpr int packbits = COMPRESSION_PACKBITS;
    return {
        make("grey", {1, 8, black}),
        make("grey_packed", {1, 8, black, packbits}),
        make("grey_from_white", {1, 8, PHOTOMETRIC_MINISWHITE}),
        make("grey1", {1, 1, black}, Toolkit::refuses),
        make("grey4", {1, 4, black}, Toolkit::refuses),
        make("grey16", {1, 16, black}, Toolkit::refuses),
        make("grey_alpha", {2, 8, black, COMPRESSION_NONE, "w", free}, Toolkit::differs),
        make("palette", {1, 8, PHOTOMETRIC_PALETTE}),
        make("palette4", {1, 4, PHOTOMETRIC_PALETTE}, Toolkit::refuses),
        make("rgb", {3}),
        make("rgb_little", {3, 8, rgb, COMPRESSION_NONE, "wl"}),
        make("rgb_big", {3, 8, rgb, COMPRESSION_NONE, "wb"}),
        make("rgb_packed", {3, 8, rgb, packbits}),
        make("rgb_lzw", {3, 8, rgb, COMPRESSION_LZW}),
        make("rgb_deflate", {3, 8, rgb, COMPRESSION_ADOBE_DEFLATE}),
        make("rgb_planes", {3, 8, rgb, COMPRESSION_NONE, "w", -1, true}, Toolkit::differs),
        make("rgb_tile", {3, 8, rgb, COMPRESSION_NONE, "w", -1, false, 16}),
        make("rgb_from_bottom", {3, 8, rgb, COMPRESSION_NONE, "w", -1, false, 0, ORIENTATION_BOTLEFT},
             Toolkit::differs),
        make("rgb16_little", {3, 16, rgb, COMPRESSION_NONE, "wl"}, Toolkit::refuses),
        make("rgb16_big", {3, 16, rgb, COMPRESSION_LZW, "wb"}, Toolkit::refuses),
        make("rgba", {4, 8, rgb, COMPRESSION_NONE, "w", free}),
        make("rgba_multiplied", {4, 8, rgb, packbits, "w", EXTRASAMPLE_ASSOCALPHA}),
        make("rgba16", {4, 16, rgb, COMPRESSION_NONE, "w", free}, Toolkit::refuses),
        make("inks", {4, 8, PHOTOMETRIC_SEPARATED}, Toolkit::refuses),
    };
}
