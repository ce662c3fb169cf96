#include "gltf/GltfPicture.h"

#include "gltf/GltfPictureFile.h"
#include "textures/PictureAlpha.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <png.h>
#include <unistd.h>

namespace
{

std::string pngOf(PicturePixels const& pixels)
{
    constexpr std::array<png_uint_32, 4> formats = {PNG_FORMAT_GRAY, PNG_FORMAT_GA, PNG_FORMAT_RGB,
                                                    PNG_FORMAT_RGBA};
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(pixels.width);
    image.height = static_cast<png_uint_32>(pixels.height);
    image.format = formats.at(static_cast<std::size_t>(pixels.components) - 1);
    char* memory = nullptr;
    std::size_t size = 0;
    FILE* const stream = ::open_memstream(&memory, &size);
    if (stream == nullptr)
        return "";
    int const stride = -pixels.width * pixels.components; // the bottom row is the first
    bool const isWritten =
        ::png_image_write_to_stdio(&image, stream, 0, pixels.bytes.data(), stride, nullptr) != 0;
    bool const isClosed = std::fclose(stream) == 0;
    std::string bytes = isWritten && isClosed ? std::string(memory, size) : std::string();
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): the stream's
    return bytes;
}

std::string contentsOf(std::string const& path, GltfPicture::Source const& source)
{
    OpenFile const file = source.readable.open(path);
    if (!file.isOpen() || file.size() > source.largestFile)
        return "";
    std::string contents(file.size(), '\0');
    std::size_t done = 0;
    while (done < contents.size()) {
        ssize_t const count = ::pread(file.descriptor(), contents.data() + done, contents.size() - done,
                                      static_cast<off_t>(done));
        if (count <= 0)
            return "";
        done += static_cast<std::size_t>(count);
    }
    return contents;
}

} // namespace

GltfPicture::GltfPicture(FltTexture const& texture, bool isOpaque, Source const& source)
{
    PicturePixels const& pixels = *texture.pixels;
    bool const losesAlpha = isOpaque && hasAlpha(pixels);
    if (!losesAlpha && texture.damage.empty()) {
        bytes = contentsOf(texture.path, source);
        PictureBytes const file(reinterpret_cast<unsigned char const*>(bytes.data()), bytes.size());
        isJpeg = GltfPictureFile::isPlainJpeg(file, pixels);
        if (isJpeg || GltfPictureFile::isPlainPng(file, pixels))
            return;
    }
    bytes = pngOf(losesAlpha ? withoutAlpha(pixels) : pixels);
}
