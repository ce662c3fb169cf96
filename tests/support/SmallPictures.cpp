#include "support/SmallPictures.h"

#include <tiffio.h>
#include <vector>

namespace
{

char byteOf(int number)
{
    return static_cast<char>(number);
}

std::string big16(int number)
{
    return {byteOf(number >> 8), byteOf(number)};
}

std::string big32(std::size_t number)
{
    return big16(static_cast<int>(number >> 16)) + big16(static_cast<int>(number & 0xffff));
}

std::string little16(int number)
{
    return {byteOf(number), byteOf(number >> 8)};
}

/// Bytes that differ from each other.
std::string shades(int count, int first)
{
    std::string bytes;
    for (int i = 0; i < count; ++i)
        bytes += byteOf(first + 37 * i);
    return bytes;
}

} // namespace

std::string SmallPictures::compressedSgi(int width, int height, int channels)
{
    std::string head = big16(0x01da) + byteOf(1) + byteOf(1) + big16(3) + big16(width) + big16(height) +
                       big16(channels) + big32(0) + big32(255);
    head.resize(512);
    auto const rows = static_cast<std::size_t>(height) * static_cast<std::size_t>(channels);
    std::string starts;
    std::string sizes;
    std::string packets;
    for (std::size_t row = 0; row < rows; ++row) {
        int const copied = width / 2;
        std::string const packet = byteOf(0x80 | copied) + shades(copied, static_cast<int>(row)) +
                                   byteOf(width - copied) + byteOf(200) + byteOf(0);
        starts += big32(head.size() + 8 * rows + packets.size());
        sizes += big32(packet.size());
        packets += packet;
    }
    return head + starts + sizes + packets;
}

std::string SmallPictures::compressedTga(int width, int height)
{
    constexpr int paletteSize = 4;
    std::string bytes = byteOf(3) + std::string("\1\x0a") + little16(0) + little16(paletteSize) + byteOf(24) +
                        little16(0) + little16(0) + little16(width) + little16(height) + byteOf(24) +
                        byteOf(0);
    bytes += "abc" + std::string(paletteSize * 3, '\7');
    for (int row = 0; row < height; ++row) {
        int const copied = width / 2;
        bytes += byteOf(copied - 1) + shades(3 * copied, row) + byteOf(0x80 | (width - copied - 1)) +
                 shades(3, row);
    }
    return bytes;
}

void SmallPictures::writeTiff(std::string const& path, int width, int height, int channels)
{
    TIFF* const tiff = ::TIFFOpen(path.c_str(), "w");
    ::TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
    ::TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
    ::TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    ::TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, channels);
    ::TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, channels > 2 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
    ::TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    ::TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_PACKBITS);
    ::TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 2);
    for (int row = 0; row < height; ++row) {
        std::string line = shades(width * channels, row);
        ::TIFFWriteScanline(tiff, line.data(), static_cast<std::uint32_t>(row), 0);
    }
    ::TIFFClose(tiff);
}
