#include "support/SmallPictures.h"

#include <cstdio>
#include <jpeglib.h>
#include <png.h>
#include <stdexcept>
#include <tiffio.h>

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

std::string sgiHead(bool isCompressed, int width, int height, int channels)
{
    std::string head = big16(0x01da) + byteOf(isCompressed ? 1 : 0) + byteOf(1) + big16(3) + big16(width) +
                       big16(height) + big16(channels) + big32(0) + big32(255);
    head.resize(512);
    return head;
}

} // namespace

std::string SmallPictures::plainSgi(unsigned char side, unsigned char grey)
{
    constexpr int channels = 3;
    std::size_t const pixels = std::size_t(side) * side;
    return sgiHead(false, side, side, channels) + std::string(pixels * channels, static_cast<char>(grey));
}

std::string SmallPictures::clearSgi(int side,
                                    std::function<std::array<unsigned char, 4>(int x, int y)> const& pixel)
{
    constexpr int channels = 4;
    std::string bytes = sgiHead(false, side, side, channels);
    for (std::size_t channel = 0; channel < channels; ++channel)
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                bytes += static_cast<char>(pixel(x, y)[channel]);
    return bytes;
}

std::string SmallPictures::compressedSgi(int width, int height, int channels)
{
    std::string const head = sgiHead(true, width, height, channels);
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

void SmallPictures::writeJpeg(std::string const& path, int width, int height, bool isProgressive)
{
    jpeg_error_mgr errors;
    jpeg_compress_struct state = {};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    FILE* const file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        throw std::runtime_error("cannot write " + path);
    jpeg_stdio_dest(&state, file);
    state.image_width = static_cast<JDIMENSION>(width);
    state.image_height = static_cast<JDIMENSION>(height);
    state.input_components = 3;
    state.in_color_space = JCS_RGB;
    jpeg_set_defaults(&state);
    if (isProgressive)
        jpeg_simple_progression(&state);
    jpeg_start_compress(&state, TRUE);
    for (int row = 0; row < height; ++row) {
        std::string line = shades(3 * width, row);
        auto* bytes = reinterpret_cast<JSAMPROW>(line.data());
        jpeg_write_scanlines(&state, &bytes, 1);
    }
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    std::fclose(file);
}

void SmallPictures::writePng(std::string const& path, int width, int height)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = PNG_FORMAT_RGBA;
    std::string const pixels = shades(4 * width * height, 0);
    if (png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr) == 0)
        throw std::runtime_error("cannot write " + path);
}
