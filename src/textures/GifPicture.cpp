#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <gif_lib.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace
{

constexpr std::size_t channels = 4;

/// A file in memory, as giflib reads it.
struct Source {
    PictureBytes const& file;
    std::size_t place = 0;
};

int read(GifFileType* gif, GifByteType* to, int most)
{
    auto& source = *static_cast<Source*>(gif->UserData);
    std::size_t const count = source.file.countAt(source.place, static_cast<std::size_t>(std::max(most, 0)));
    if (count > 0)
        std::memcpy(to, source.file.data() + source.place, count);
    source.place += count;
    return static_cast<int>(count);
}

struct Close {
    void operator()(GifFileType* gif) const { ::DGifCloseFile(gif, nullptr); }
};

PictureProblem damaged(char const* words)
{
    return PictureProblem("is a damaged GIF picture (" + std::string(words != nullptr ? words : "?") + ")");
}

/// Lays the pictures of a file over each other, line by line: what a file may have of them has no bound.
class Decoder
{
public:
    explicit Decoder(PictureBytes const& file) : source{file}
    {
        int reason = 0;
        gif.reset(::DGifOpen(&source, read, &reason));
        if (gif == nullptr)
            throw damaged(::GifErrorString(reason));
        picture = DecodedPicture(sideOf(gif->SWidth), sideOf(gif->SHeight), channels, file);
        line.resize(picture.width());
    }

    DecodedPicture decode()
    {
        for (;;) {
            GifRecordType kind = UNDEFINED_RECORD_TYPE;
            check(::DGifGetRecordType(gif.get(), &kind));
            if (kind == IMAGE_DESC_RECORD_TYPE)
                readPart();
            else if (kind == EXTENSION_RECORD_TYPE)
                readExtension();
            else if (hasPart)
                return std::move(picture);
            else
                throw damaged("it ends before its first picture");
        }
    }

private:
    static std::uint64_t sideOf(GifWord side) { return static_cast<std::uint64_t>(std::max(side, 0)); }

    void check(int outcome) const
    {
        if (outcome != GIF_OK)
            throw damaged(::GifErrorString(gif->Error));
    }

    /// Of the extensions one counts: which colour shows nothing.
    void readExtension()
    {
        int code = 0;
        GifByteType* block = nullptr;
        check(::DGifGetExtension(gif.get(), &code, &block));
        while (block != nullptr) {
            constexpr unsigned hasTransparency = 1;
            bool const isControl = code == GRAPHICS_EXT_FUNC_CODE && block[0] == 4;
            if (isControl)
                transparent =
                    (block[1] & hasTransparency) != 0 ? std::optional<unsigned>(block[4]) : std::nullopt;
            check(::DGifGetExtensionNext(gif.get(), &block));
        }
    }

    void readPart()
    {
        check(::DGifGetImageDesc(gif.get()));
        GifImageDesc const& part = gif->Image;
        colors = part.ColorMap != nullptr ? part.ColorMap : gif->SColorMap;
        bool const liesInside = part.Left >= 0 && part.Top >= 0 && part.Width > 0 && part.Height > 0 &&
                                part.Left + part.Width <= gif->SWidth &&
                                part.Top + part.Height <= gif->SHeight;
        if (!liesInside)
            throw damaged("a part lies outside");
        if (colors == nullptr)
            throw damaged("it has no colours");
        if (!hasPart)
            fillBackground();
        if (part.Interlace) {
            constexpr std::pair<int, int> passes[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
            for (auto const& [first, step] : passes)
                for (int y = first; y < part.Height; y += step)
                    readLine(part, y);
        } else {
            for (int y = 0; y < part.Height; ++y)
                readLine(part, y);
        }
        hasPart = true;
        transparent.reset();
    }

    void readLine(GifImageDesc const& part, int y)
    {
        check(::DGifGetLine(gif.get(), line.data(), part.Width));
        unsigned char* to =
            picture.rowFromTop(static_cast<std::size_t>(part.Top) + static_cast<std::size_t>(y)) +
            channels * static_cast<std::size_t>(part.Left);
        for (int x = 0; x < part.Width; ++x, to += channels)
            put(line[static_cast<std::size_t>(x)], to);
    }

    void fillBackground()
    {
        bool const hasBackground =
            gif->SColorMap != nullptr && gif->SBackGroundColor < gif->SColorMap->ColorCount;
        GifColorType const color =
            hasBackground ? gif->SColorMap->Colors[gif->SBackGroundColor] : GifColorType{};
        for (std::size_t at = 0; at < picture.pixels.bytes.size(); at += channels)
            putColor(color, 0xff, picture.pixels.bytes.data() + at);
    }

    void put(unsigned index, unsigned char* to) const
    {
        if (static_cast<int>(index) >= colors->ColorCount)
            throw damaged("a pixel has a colour that isn't there");
        bool const isTransparent = transparent == index;
        if (!isTransparent || !hasPart)
            putColor(colors->Colors[index], isTransparent ? 0 : 0xff, to);
    }

    static void putColor(GifColorType const& color, unsigned char alpha, unsigned char* to)
    {
        to[0] = color.Red;
        to[1] = color.Green;
        to[2] = color.Blue;
        to[3] = alpha;
    }

    Source source;
    std::unique_ptr<GifFileType, Close> gif;
    DecodedPicture picture;
    std::vector<GifPixelType> line;
    ColorMapObject const* colors = nullptr;
    std::optional<unsigned> transparent;
    bool hasPart = false;
};

} // namespace

DecodedPicture PictureFormats::decodeGif(PictureBytes const& file)
{
    return Decoder(file).decode();
}
