#include "support/PngFile.h"

#include <array>
#include <cstddef>
#include <png.h>

namespace
{

/// @param rowStride bytes of a row, negative if the bottom one is the first
std::string write(int width, int height, png_uint_32 format, unsigned char const* pixels, int rowStride,
                  FILE* file)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    bool const written = png_image_write_to_stdio(&image, file, 0, pixels, rowStride, nullptr) != 0;
    return written || std::ferror(file) != 0 ? "" : image.message;
}

} // namespace

std::string writePng(Picture const& picture, FILE* file)
{
    return write(picture.width, picture.height, picture.channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB,
                 picture.pixels.data(), picture.width * picture.channels, file);
}

std::string writePng(PicturePixels const& pixels, FILE* file)
{
    constexpr std::array<png_uint_32, 4> formats = {PNG_FORMAT_GRAY, PNG_FORMAT_GA, PNG_FORMAT_RGB,
                                                    PNG_FORMAT_RGBA};
    return write(pixels.width, pixels.height, formats.at(static_cast<std::size_t>(pixels.components) - 1),
                 pixels.bytes.data(), -pixels.width * pixels.components, file);
}
