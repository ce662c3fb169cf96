#include "support/PngFile.h"

#include <png.h>

std::string writePng(Picture const& picture, FILE* file)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = picture.channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    bool const written = png_image_write_to_stdio(&image, file, 0, picture.pixels.data(), 0, nullptr) != 0;
    return written || std::ferror(file) != 0 ? "" : image.message;
}
