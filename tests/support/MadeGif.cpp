#include "support/MadePictures.h"

#include <gif_lib.h>
#include <utility>

using namespace MadePictures;

namespace
{

constexpr int colorBits = 4;
constexpr int background = 5;

struct Part {
    int left = 0;
    int top = 0;
    int right = width;
    int bottom = height;
    int shift = 0; ///< Added to the index of each colour.
    bool isInterlaced = false;
    int transparent = -1;
    bool hasOwnColors = false;
};

int indexAt(Part const& part, int x, int y)
{
    return (sample(x, y, 0, colorBits) + part.shift) & 15;
}

bool holds(Part const& part, int x, int y)
{
    return x >= part.left && x < part.right && y >= part.top && y < part.bottom;
}

GifColorType colorOf(int index, bool isOwn)
{
    auto const value = [](int number) { return static_cast<GifByteType>(number); };
    return {value(index * 11 + (isOwn ? 3 : 0)), value(255 - index * 13), value(index * 7)};
}

ColorMapObject* colorMap(bool isOwn)
{
    ColorMapObject* const map = ::GifMakeMapObject(1 << colorBits, nullptr);
    for (int i = 0; i < map->ColorCount; ++i)
        map->Colors[i] = colorOf(i, isOwn);
    return map;
}

int append(GifFileType* gif, GifByteType const* bytes, int count)
{
    static_cast<std::string*>(gif->UserData)
        ->append(reinterpret_cast<char const*>(bytes), std::size_t(count));
    return count;
}

void putPart(GifFileType* gif, Part const& part)
{
    if (part.transparent >= 0) {
        GraphicsControlBlock const control = {DISPOSAL_UNSPECIFIED, false, 0, part.transparent};
        GifByteType bytes[4];
        ::EGifGCBToExtension(&control, bytes);
        ::EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, sizeof bytes, bytes);
    }
    ColorMapObject* const own = part.hasOwnColors ? colorMap(true) : nullptr;
    ::EGifPutImageDesc(gif, part.left, part.top, part.right - part.left, part.bottom - part.top,
                       part.isInterlaced, own);
    ::GifFreeMapObject(own);
    auto const putLine = [&](int y) {
        std::string line;
        for (int x = part.left; x < part.right; ++x)
            line += byteOf(indexAt(part, x, y));
        ::EGifPutLine(gif, reinterpret_cast<GifPixelType*>(line.data()), part.right - part.left);
    };
    constexpr std::pair<int, int> passes[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
    constexpr std::pair<int, int> inOrder[] = {{0, 1}};
    auto const put = [&](auto const& order) {
        for (auto const& [first, step] : order)
            for (int y = part.top + first; y < part.bottom; y += step)
                putLine(y);
    };
    part.isInterlaced ? put(passes) : put(inOrder);
}

std::string fileOf(std::vector<Part> const& parts, bool isOld)
{
    std::string bytes;
    int problem = 0;
    GifFileType* const gif = ::EGifOpen(&bytes, append, &problem);
    ::EGifSetGifVersion(gif, !isOld);
    ColorMapObject* const colors = colorMap(false);
    ::EGifPutScreenDesc(gif, width, height, colorBits, background, colors);
    ::GifFreeMapObject(colors);
    for (Part const& part : parts)
        putPart(gif, part);
    ::EGifCloseFile(gif, nullptr);
    return bytes;
}

int shownValue(std::vector<Part> const& parts, int x, int y, int channel)
{
    GifColorType color = colorOf(background, false);
    int alpha = 255;
    for (Part const& part : parts) {
        if (!holds(part, x, y))
            continue;
        int const index = indexAt(part, x, y);
        bool const isTransparent = index == part.transparent;
        if (isTransparent && &part != &parts.front())
            continue;
        color = colorOf(index, part.hasOwnColors);
        alpha = isTransparent ? 0 : 255;
    }
    int const values[] = {color.Red, color.Green, color.Blue, alpha};
    return values[channel];
}

MadePicture make(std::string const& name, std::vector<Part> const& parts,
                 MadePicture::Toolkit toolkit = MadePicture::Toolkit::agrees, bool isOld = false)
{
    constexpr int components = 4;
    auto const value = [&](int x, int y, int channel) { return shownValue(parts, x, y, channel); };
    return {name + ".gif", fileOf(parts, isOld),          width,  height,
            components,    fromBottom(components, value), toolkit};
}

} // namespace

std::vector<MadePicture> MadePictures::gif()
{
    using Toolkit = MadePicture::Toolkit;
    Part const inside = {2, 3, 7, 9, 1};
    Part clear;
    clear.transparent = 6;
    Part interlaced;
    interlaced.isInterlaced = true;
    Part own;
    own.hasOwnColors = true;
    Part clearInside = inside;
    clearInside.transparent = 6;
    return {
        make("plain", {Part()}),
        make("old", {Part()}, Toolkit::agrees, true),
        make("interlaced", {interlaced}),
        make("clear", {clear}),
        make("own_colors", {own}),
        make("inside", {inside}),
        make("clear_inside", {clearInside}),
        make("two_parts", {Part(), inside}),
        make("clear_above", {Part(), clearInside}),
        make("above_clear", {clear, inside}),
    };
}
