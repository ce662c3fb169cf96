#include "toolkit/ImageSafety.h"

#include "toolkit/GifImage.h"
#include "toolkit/ImageClaim.h"
#include "toolkit/ImageFile.h"
#include "toolkit/JpegImage.h"
#include "toolkit/PicImage.h"
#include "toolkit/PngImage.h"
#include "toolkit/SgiImage.h"
#include "toolkit/TgaImage.h"
#include "toolkit/TiffImage.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace
{

using namespace std::string_view_literals;

/// Decoded, in bytes. The best compression that there is, of one colour all over, stays below.
constexpr std::uint64_t mostPerByte = 1200;
constexpr std::uint64_t alwaysGranted = 64U << 20;

/// The library counts the bytes of a picture in an int,
constexpr std::uint64_t mostEver = std::numeric_limits<int>::max();

/// and the toolkit the pixels each way in a short.
constexpr std::uint64_t longestSide = std::numeric_limits<short>::max();

struct Format {
    std::string_view begin; ///< The first bytes of its files.
    ImageClaim (*claimOf)(ImageFile& file);
    bool (*isSound)(ImageFile& file);
};

constexpr Format formats[] = {
    {"\x89PNG", PngImage::claimOf, PngImage::isSound},   {"\xff\xd8", JpegImage::claimOf, JpegImage::isSound},
    {"\x01\xda", SgiImage::claimOf, SgiImage::isSound},  {"II*\0"sv, TiffImage::claimOf, TiffImage::isSound},
    {"MM\0*"sv, TiffImage::claimOf, TiffImage::isSound}, {"GIF8", GifImage::claimOf, GifImage::isSound},
    {"\x19\x91", PicImage::claimOf, PicImage::isSound},
};

/// Its files are known by their names alone.
constexpr Format tga = {"", TgaImage::claimOf, TgaImage::isSound};

/// The format for which the library takes a file, or null.
Format const* formatOf(ImageFile& file)
{
    ImageFile::Bytes const head = file.read(0, 4);
    for (Format const& format : formats)
        if (head.begins(format.begin))
            return &format;
    std::string_view const path = file.path();
    std::string_view const ending = path.substr(std::min(path.rfind('.'), path.size()));
    return ending == ".tga" || ending == ".TGA" ? &tga : nullptr;
}

bool isCredible(ImageClaim const& claim, std::uint64_t fileSize)
{
    return claim.width <= longestSide && claim.height <= longestSide &&
           claim.width * claim.height * claim.channels <=
               std::min(alwaysGranted + fileSize * mostPerByte, mostEver);
}

} // namespace

char const* ImageSafety::problemOf(std::string const& path)
{
    ImageFile file(path);
    Format const* const format = file.isOpen() ? formatOf(file) : nullptr;
    if (format == nullptr)
        return nullptr;
    if (!isCredible(format->claimOf(file), file.size()))
        return "can't hold a picture of its size";
    return format->isSound(file) ? nullptr : "is damaged";
}
