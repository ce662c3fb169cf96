#include "toolkit/ImageSafety.h"

#include "toolkit/ImageClaim.h"
#include "toolkit/ImageFile.h"
#include "toolkit/JpegImage.h"
#include "toolkit/PngImage.h"
#include "toolkit/RunLengthImage.h"
#include "toolkit/TiffImage.h"

#include <algorithm>
#include <array>
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

/// Enough for the formats whose size has a fixed place.
constexpr std::size_t shortHead = 32;

ImageClaim pngClaim(ImageFile::Bytes const& head)
{
    if (head.size() < 26)
        return {};
    std::array<unsigned, 7> constexpr channels = {1, 4, 3, 4, 2, 4, 4}; // by the type of colours
    return {head.big32(16), head.big32(20), channels[std::min(head.byte(25), 6U)]};
}

ImageClaim sgiClaim(ImageFile::Bytes const& head)
{
    if (head.size() < 12)
        return {};
    return {head.big16(6), head.big16(8), head.big16(10)};
}

ImageClaim gifClaim(ImageFile::Bytes const& head)
{
    if (head.size() < 10)
        return {};
    return {head.little16(6), head.little16(8), 4};
}

ImageClaim picClaim(ImageFile::Bytes const& head)
{
    if (head.size() < 6)
        return {};
    return {head.little16(2), head.little16(4), 3};
}

bool isCredible(ImageClaim const& claim, std::uint64_t fileSize)
{
    return claim.width <= longestSide && claim.height <= longestSide &&
           claim.width * claim.height * claim.channels <=
               std::min(alwaysGranted + fileSize * mostPerByte, mostEver);
}

/// What the library knows by its ending alone.
bool isTga(std::string_view path)
{
    std::string_view const ending = path.substr(std::min(path.rfind('.'), path.size()));
    return ending == ".tga" || ending == ".TGA";
}

} // namespace

char const* ImageSafety::problemOf(std::string const& path)
{
    ImageFile file(path);
    if (!file.isOpen())
        return nullptr;
    ImageFile::Bytes const head = file.read(0, shortHead);
    bool const isPng = head.begins("\x89PNG");
    bool const isJpeg = head.begins("\xff\xd8");
    bool const isSgi = head.begins("\x01\xda");
    bool const isTiff = head.begins("II*\0"sv) || head.begins("MM\0*"sv);
    ImageClaim const claim = isPng                     ? pngClaim(head)
                             : isJpeg                  ? JpegImage::claimOf(path)
                             : isSgi                   ? sgiClaim(head)
                             : isTiff                  ? TiffImage::claimOf(path)
                             : head.begins("GIF8")     ? gifClaim(head)
                             : head.begins("\x19\x91") ? picClaim(head)
                                                       : ImageClaim();
    if (!isCredible(claim, file.size()))
        return "can't hold a picture of its size";
    bool const isSound = isPng         ? PngImage::isSound(file)
                         : isJpeg      ? JpegImage::isSound(file, path)
                         : isSgi       ? RunLengthImage::isSoundSgi(file)
                         : isTiff      ? TiffImage::isSound(path)
                         : isTga(path) ? RunLengthImage::isSoundTga(file)
                                       : true;
    return isSound ? nullptr : "is damaged";
}
