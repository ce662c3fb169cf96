#include "PngFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <png.h>

std::string writePng(Picture const& picture, std::string const& path)
{
    FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return std::strerror(errno);

    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = picture.channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    errno = 0;
    bool const written = png_image_write_to_stdio(&image, file, 0, picture.pixels.data(), 0, nullptr) != 0;
    int const reason = errno;
    if (std::fclose(file) == 0 && written)
        return "";
    std::remove(path.c_str());
    return reason != 0                ? std::strerror(reason)
           : image.message[0] != '\0' ? image.message
                                      : std::strerror(errno);
}
