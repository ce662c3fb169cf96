#include "toolkit/TiffImage.h"

#include "toolkit/ImageFile.h"

#include <algorithm>
#include <cstdarg>
#include <memory>
#include <tiffio.h>
#include <vector>

namespace
{

int saySilently(TIFF*, void*, char const*, char const*, va_list)
{
    constexpr int isHandled = 1;
    return isHandled;
}

struct Close {
    void operator()(TIFF* tiff) const { ::TIFFClose(tiff); }
    void operator()(TIFFOpenOptions* options) const { ::TIFFOpenOptionsFree(options); }
};

using Tiff = std::unique_ptr<TIFF, Close>;

Tiff open(std::string const& path)
{
    std::unique_ptr<TIFFOpenOptions, Close> const options(::TIFFOpenOptionsAlloc());
    ::TIFFOpenOptionsSetErrorHandlerExtR(options.get(), saySilently, nullptr);
    ::TIFFOpenOptionsSetWarningHandlerExtR(options.get(), saySilently, nullptr);
    return Tiff(::TIFFOpenExt(path.c_str(), "r", options.get()));
}

/// The value of a field; 0 if the file has none.
template <typename Number>
Number fieldOf(TIFF* tiff, std::uint32_t tag)
{
    Number value = 0;
    return ::TIFFGetField(tiff, tag, &value) == 1 ? value : Number(0);
}

/// The length of a side, or that of the tiles in its direction.
std::uint64_t sideOf(TIFF* tiff, std::uint32_t pictureTag, std::uint32_t tileTag)
{
    return std::max(fieldOf<std::uint32_t>(tiff, pictureTag), fieldOf<std::uint32_t>(tiff, tileTag));
}

bool canBeDecoded(TIFF* tiff)
{
    auto const width = fieldOf<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH);
    auto const height = fieldOf<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH);
    std::vector<std::uint32_t> pixels(std::size_t(width) * height);
    constexpr int stopAtDamage = 1;
    return ::TIFFReadRGBAImage(tiff, width, height, pixels.data(), stopAtDamage) == 1;
}

} // namespace

ImageClaim TiffImage::claimOf(ImageFile& file)
{
    Tiff const tiff = open(file.path());
    if (tiff == nullptr)
        return {};
    return {sideOf(tiff.get(), TIFFTAG_IMAGEWIDTH, TIFFTAG_TILEWIDTH),
            sideOf(tiff.get(), TIFFTAG_IMAGELENGTH, TIFFTAG_TILELENGTH), 4};
}

bool TiffImage::isSound(ImageFile& file)
{
    Tiff const tiff = open(file.path());
    if (tiff == nullptr)
        return true; // the library can't open it either
    auto const channels = fieldOf<std::uint16_t>(tiff.get(), TIFFTAG_SAMPLESPERPIXEL);
    if (fieldOf<std::uint16_t>(tiff.get(), TIFFTAG_PHOTOMETRIC) != PHOTOMETRIC_RGB)
        return true;
    bool const isInPlanes = fieldOf<std::uint16_t>(tiff.get(), TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
    if (isInPlanes && channels < 3)
        return false; // it takes three planes for granted
    return channels != 4 || canBeDecoded(tiff.get());
}
