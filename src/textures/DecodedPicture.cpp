#include "textures/DecodedPicture.h"

#include "textures/PictureBytes.h"

#include <algorithm>
#include <limits>

namespace
{

constexpr std::uint64_t mostPerByte = 1200;
constexpr std::uint64_t alwaysGranted = 64U << 20;

/// The toolkit counts the bytes of a picture in an int,
constexpr std::uint64_t mostEver = std::numeric_limits<int>::max();

/// and its pixels each way in a short.
constexpr std::uint64_t longestSide = std::numeric_limits<short>::max();

} // namespace

DecodedPicture::DecodedPicture(std::uint64_t width, std::uint64_t height, std::uint64_t components,
                               PictureBytes const& file)
{
    checkSize(width, height, components, file);
    pixels.width = static_cast<int>(width);
    pixels.height = static_cast<int>(height);
    pixels.components = static_cast<int>(components);
    pixels.bytes.resize(static_cast<std::size_t>(width * height * components));
}

std::uint64_t DecodedPicture::mostBytes(PictureBytes const& file)
{
    return std::min(alwaysGranted + std::uint64_t(file.size()) * mostPerByte, mostEver);
}

void DecodedPicture::checkSize(std::uint64_t width, std::uint64_t height, std::uint64_t bytesOfPixel,
                               PictureBytes const& file)
{
    if (width == 0 || height == 0 || bytesOfPixel == 0)
        throw PictureProblem("holds a picture without pixels");
    if (width > longestSide || height > longestSide || width * height * bytesOfPixel > mostBytes(file))
        throw PictureProblem("can't hold a picture of its size");
}
