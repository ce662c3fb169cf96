#include "gltf/GltfPictureFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace
{

bool hasSize(PicturePixels const& pixels, std::uint32_t width, std::uint32_t height)
{
    return static_cast<std::uint32_t>(pixels.width) == width &&
           static_cast<std::uint32_t>(pixels.height) == height;
}

bool standsAt(PictureBytes const& file, std::size_t at, std::string_view text)
{
    return file.holds(at, text.size()) &&
           std::string_view(reinterpret_cast<char const*>(file.data()) + at, text.size()) == text;
}

/// What a camera says of how it was held, which readers turn the picture by.
bool isTurned(PictureBytes const& file, std::size_t exif, std::size_t end)
{
    constexpr std::uint32_t orientation = 0x112, upright = 1;
    constexpr std::size_t entrySize = 12;
    bool const isBig = standsAt(file, exif, "MM");
    auto const word = [&](std::size_t at) { return isBig ? file.big16(at) : file.little16(at); };
    auto const longWord = [&](std::size_t at) {
        return isBig ? file.big32(at) : file.little16(at) | file.little16(at + 2) << 16;
    };
    std::size_t const directory = exif + longWord(exif + 4);
    std::uint32_t const count = word(directory);
    for (std::uint32_t i = 0; i < count; ++i) {
        std::size_t const entry = directory + 2 + entrySize * i;
        if (entry + entrySize > end)
            return false;
        if (word(entry) == orientation)
            return word(entry + 8) != upright;
    }
    return false;
}

/// What a segment of a JPEG file says of how the others are shown.
enum class Segment { plain, strange, frame };

Segment segmentAt(PictureBytes const& file, std::size_t at, PicturePixels const& pixels)
{
    constexpr unsigned baseline = 0xc0, extended = 0xc1, progressive = 0xc2, tables = 0xc4, arithmetic = 0xcc,
                       exif = 0xe1, profile = 0xe2, adobe = 0xee, lastFrame = 0xcf;
    unsigned const marker = file.byte(at + 1);
    std::size_t const begin = at + 4;
    std::size_t const end = at + 2 + file.big16(at + 2);
    if (marker == baseline || marker == extended || marker == progressive) {
        unsigned const components = file.byte(begin + 5);
        bool const isRgb = components == 3 && file.byte(begin + 6) == 'R';
        bool const isKnown = file.byte(begin) == 8 && (components == 1 || (components == 3 && !isRgb));
        return isKnown && hasSize(pixels, file.big16(begin + 3), file.big16(begin + 1)) ? Segment::frame
                                                                                        : Segment::strange;
    }
    if (marker > progressive && marker <= lastFrame && marker != tables && marker != arithmetic)
        return Segment::strange;
    if (marker == exif && standsAt(file, begin, std::string_view("Exif\0\0", 6)))
        return isTurned(file, begin + 6, end) ? Segment::strange : Segment::plain;
    if (marker == profile && standsAt(file, begin, "ICC_PROFILE"))
        return Segment::strange;
    constexpr std::size_t transform = 11; // of the colours, in Adobe's segment
    if (marker == adobe && standsAt(file, begin, "Adobe") && file.byte(begin + transform) == 0)
        return Segment::strange;
    return Segment::plain;
}

constexpr std::uint32_t usualGamma = 45455;
constexpr std::array<std::uint32_t, 8> usualColors = {31270, 32900, 64000, 33000, 30000, 60000, 15000, 6000};

bool isUsual(PictureBytes const& file, std::size_t colors)
{
    for (std::size_t i = 0; i < usualColors.size(); ++i)
        if (file.big32(colors + 4 * i) != usualColors.at(i))
            return false;
    return true;
}

} // namespace

bool GltfPictureFile::isPlainJpeg(PictureBytes const& file, PicturePixels const& pixels)
{
    constexpr unsigned mark = 0xff, startOfScan = 0xda, lone = 0x01, firstRestart = 0xd0, lastLone = 0xd9;
    if (!file.begins("\xff\xd8\xff"))
        return false;
    bool hasFrame = false;
    for (std::size_t at = 2; file.holds(at, 4) && file.byte(at) == mark;) {
        unsigned const marker = file.byte(at + 1);
        if (marker == startOfScan)
            return hasFrame;
        bool const isLone = marker == lone || (marker >= firstRestart && marker <= lastLone);
        if (marker == mark || isLone) {
            at += marker == mark ? 1 : 2;
            continue;
        }
        Segment const segment = segmentAt(file, at, pixels);
        if (segment == Segment::strange || (segment == Segment::frame && hasFrame))
            return false;
        hasFrame = hasFrame || segment == Segment::frame;
        at += 2 + std::max<std::size_t>(file.big16(at + 2), 2);
    }
    return false;
}

bool GltfPictureFile::isPlainPng(PictureBytes const& file, PicturePixels const& pixels)
{
    constexpr std::size_t head = 8, chunkFrame = 12;
    if (!file.begins("\x89PNG\r\n\x1a\n") || !standsAt(file, head + 4, "IHDR") ||
        !hasSize(pixels, file.big32(head + 8), file.big32(head + 12)))
        return false;
    bool isUsualSpace = true;
    bool saysSo = false;
    for (std::size_t at = head; file.holds(at, chunkFrame);) {
        std::size_t const length = file.big32(at);
        std::size_t const begin = at + 8;
        if (standsAt(file, at + 4, "IDAT"))
            return saysSo || isUsualSpace;
        saysSo = saysSo || standsAt(file, at + 4, "sRGB");
        if (standsAt(file, at + 4, "gAMA"))
            isUsualSpace = isUsualSpace && file.big32(begin) == usualGamma;
        else if (standsAt(file, at + 4, "cHRM"))
            isUsualSpace = isUsualSpace && isUsual(file, begin);
        else if (standsAt(file, at + 4, "iCCP") || standsAt(file, at + 4, "acTL") ||
                 standsAt(file, at + 4, "eXIf") ||
                 (standsAt(file, at + 4, "pHYs") && file.big32(begin) != file.big32(begin + 4)))
            return false;
        at += chunkFrame + length;
    }
    return false;
}
