#include "toolkit/ImageSafety.h"

#include "toolkit/ImageClaim.h"
#include "toolkit/ImageFile.h"
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

/// What stands in front of the size in a JPEG file is rarely longer; beyond it the size isn't looked for.
constexpr std::size_t headOfJpeg = 256U << 10;

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

/// The size stands in a frame's segment, behind others.
ImageClaim jpegClaim(ImageFile::Bytes const& head)
{
    for (std::size_t at = 2; at + 10 <= head.size() && head.byte(at) == 0xff;) {
        unsigned const marker = head.byte(at + 1);
        bool const isFrame =
            marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
        if (isFrame)
            return {head.big16(at + 7), head.big16(at + 5), std::min(head.byte(at + 9), 4U)};
        at += 2 + head.big16(at + 2);
    }
    return {};
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
    bool const isSgi = head.begins("\x01\xda");
    bool const isTiff = head.begins("II*\0"sv) || head.begins("MM\0*"sv);
    ImageClaim const claim = head.begins("\x89PNG")    ? pngClaim(head)
                             : isSgi                   ? sgiClaim(head)
                             : head.begins("\xff\xd8") ? jpegClaim(file.read(0, headOfJpeg))
                             : head.begins("GIF8")     ? gifClaim(head)
                             : head.begins("\x19\x91") ? picClaim(head)
                             : isTiff                  ? TiffImage::claimOf(path)
                                                       : ImageClaim();
    if (!isCredible(claim, file.size()))
        return "can't hold a picture of its size";
    bool const isSound = isSgi         ? RunLengthImage::isSoundSgi(file)
                         : isTiff      ? TiffImage::isSound(path)
                         : isTga(path) ? RunLengthImage::isSoundTga(file)
                                       : true;
    return isSound ? nullptr : "is damaged";
}
