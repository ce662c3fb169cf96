#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <tiffio.h>
#include <vector>

namespace
{

/// Those that pictures for textures have, by decoders that stay in bounds of memory and time.
constexpr std::uint16_t compressions[] = {COMPRESSION_NONE,          COMPRESSION_PACKBITS, COMPRESSION_LZW,
                                          COMPRESSION_ADOBE_DEFLATE, COMPRESSION_DEFLATE,  COMPRESSION_JPEG};

/// A file in memory, as libtiff reads it, and what it says of it.
struct Source {
    PictureBytes const& file;
    std::uint64_t place = 0;
    std::array<char, 100> message{}; ///< The first error.
};

Source& sourceOf(thandle_t handle)
{
    return *static_cast<Source*>(handle);
}

tmsize_t read(thandle_t handle, void* to, tmsize_t most)
{
    Source& source = sourceOf(handle);
    std::size_t const count =
        source.place > source.file.size()
            ? 0
            : source.file.countAt(static_cast<std::size_t>(source.place),
                                  static_cast<std::size_t>(std::max<tmsize_t>(most, 0)));
    if (count > 0)
        std::memcpy(to, source.file.data() + source.place, count);
    source.place += count;
    return static_cast<tmsize_t>(count);
}

tmsize_t refuseToWrite(thandle_t /*handle*/, void* /*from*/, tmsize_t /*count*/)
{
    return 0;
}

toff_t seek(thandle_t handle, toff_t offset, int from)
{
    Source& source = sourceOf(handle);
    std::uint64_t const base = from == SEEK_CUR   ? source.place
                               : from == SEEK_END ? std::uint64_t(source.file.size())
                                                  : 0;
    return source.place = base + offset;
}

int leaveOpen(thandle_t /*handle*/)
{
    return 0;
}

toff_t sizeOf(thandle_t handle)
{
    return sourceOf(handle).file.size();
}

/// libtiff reads where the bytes are then, as from a file that the system has mapped.
int map(thandle_t handle, void** bytes, toff_t* size)
{
    constexpr int isMapped = 1;
    *bytes = const_cast<unsigned char*>(sourceOf(handle).file.data()); // which it doesn't write to
    *size = sizeOf(handle);
    return isMapped;
}

void unmap(thandle_t /*handle*/, void* /*bytes*/, toff_t /*size*/) {}

constexpr int isHandled = 1;

int keepFirst(TIFF* /*tiff*/, void* user, char const* /*module*/, char const* format, va_list values)
{
    auto& message = static_cast<Source*>(user)->message;
    if (message[0] == '\0')
        static_cast<void>(std::vsnprintf(message.data(), message.size(), format, values));
    return isHandled;
}

int saySilently(TIFF* /*tiff*/, void* /*user*/, char const* /*module*/, char const* /*format*/,
                va_list /*values*/)
{
    return isHandled;
}

struct Close {
    void operator()(TIFF* tiff) const { ::TIFFClose(tiff); }
    void operator()(TIFFOpenOptions* options) const { ::TIFFOpenOptionsFree(options); }
    void operator()(TIFFRGBAImage* image) const { ::TIFFRGBAImageEnd(image); }
};

using Tiff = std::unique_ptr<TIFF, Close>;

Tiff open(Source& source)
{
    std::unique_ptr<TIFFOpenOptions, Close> const options(::TIFFOpenOptionsAlloc());
    if (options == nullptr)
        return nullptr;
    ::TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(),
                                          static_cast<tmsize_t>(DecodedPicture::mostBytes(source.file)));
    ::TIFFOpenOptionsSetErrorHandlerExtR(options.get(), keepFirst, &source);
    ::TIFFOpenOptionsSetWarningHandlerExtR(options.get(), saySilently, nullptr);
    return Tiff(::TIFFClientOpenExt("picture", "r", &source, read, refuseToWrite, seek, leaveOpen, sizeOf,
                                    map, unmap, options.get()));
}

/// The value of a field, its default if the file doesn't have it, or 0.
template <typename Number>
Number fieldOf(TIFF* tiff, std::uint32_t tag)
{
    Number value = 0;
    return ::TIFFGetFieldDefaulted(tiff, tag, &value) == 1 ? value : Number(0);
}

PictureProblem damaged(Source const& source)
{
    return PictureProblem("is a damaged TIFF picture (" + std::string(source.message.data()) + ")");
}

/// Alpha that the colours aren't multiplied with is taken as it stands, and they stay as they are.
void keepColorsAsTheyAre(TIFF* tiff)
{
    std::uint16_t count = 0;
    std::uint16_t* kinds = nullptr;
    if (::TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds) != 1 || count != 1 ||
        kinds[0] != EXTRASAMPLE_UNASSALPHA)
        return;
    std::uint16_t const asItStands = EXTRASAMPLE_ASSOCALPHA;
    ::TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &asItStands);
}

void checkSizes(TIFF* tiff, PictureBytes const& file)
{
    constexpr std::uint64_t bytesOfPixel = 4; // as libtiff decodes, whatever the picture has
    DecodedPicture::checkSize(fieldOf<std::uint32_t>(tiff, TIFFTAG_IMAGEWIDTH),
                              fieldOf<std::uint32_t>(tiff, TIFFTAG_IMAGELENGTH), bytesOfPixel, file);
    if (::TIFFIsTiled(tiff) != 0)
        DecodedPicture::checkSize(fieldOf<std::uint32_t>(tiff, TIFFTAG_TILEWIDTH),
                                  fieldOf<std::uint32_t>(tiff, TIFFTAG_TILELENGTH), bytesOfPixel, file);
}

void checkCompression(TIFF* tiff)
{
    auto const compression = fieldOf<std::uint16_t>(tiff, TIFFTAG_COMPRESSION);
    if (std::find(std::begin(compressions), std::end(compressions), compression) == std::end(compressions))
        throw PictureProblem("is a TIFF picture in compression " + std::to_string(compression) +
                             ", which isn't read");
}

/// What the toolkit's image library takes for granted of a picture that it decodes.
bool isSafeForToolkit(TIFF* tiff)
{
    auto const samples = fieldOf<std::uint16_t>(tiff, TIFFTAG_SAMPLESPERPIXEL);
    auto const colors = fieldOf<std::uint16_t>(tiff, TIFFTAG_PHOTOMETRIC);
    return fieldOf<std::uint16_t>(tiff, TIFFTAG_BITSPERSAMPLE) == 8 &&
           (colors == PHOTOMETRIC_RGB ? samples == 3 || samples == 4 : samples == 1);
}

/// Keeps some of the four bytes of each pixel.
void narrow(PicturePixels& pixels, bool isGrey, bool hasAlpha)
{
    std::vector<std::size_t> kept = isGrey ? std::vector<std::size_t>{0} : std::vector<std::size_t>{0, 1, 2};
    if (hasAlpha)
        kept.push_back(3);
    pixels.components = static_cast<int>(kept.size());
    if (kept.size() == 4)
        return;
    std::size_t to = 0;
    for (std::size_t from = 0; from < pixels.bytes.size(); from += 4)
        for (std::size_t const channel : kept)
            pixels.bytes[to++] = pixels.bytes[from + channel];
    pixels.bytes.resize(to);
    pixels.bytes.shrink_to_fit();
}

} // namespace

DecodedPicture PictureFormats::decodeTiff(PictureBytes const& file)
{
    Source source{file};
    Tiff const tiff = open(source);
    if (tiff == nullptr)
        throw damaged(source);
    checkCompression(tiff.get());
    checkSizes(tiff.get(), file);
    keepColorsAsTheyAre(tiff.get());

    constexpr int stopAtDamage = 1;
    std::array<char, 1024> message{};
    TIFFRGBAImage image = {};
    if (::TIFFRGBAImageOK(tiff.get(), message.data()) != 1 ||
        ::TIFFRGBAImageBegin(&image, tiff.get(), stopAtDamage, message.data()) != 1)
        throw PictureProblem("is a TIFF picture of a kind that isn't read (" + std::string(message.data()) +
                             ")");
    std::unique_ptr<TIFFRGBAImage, Close> const end(&image);
    image.req_orientation = ORIENTATION_BOTLEFT;
    DecodedPicture picture(image.width, image.height, 4, file);
    picture.isSafeForToolkit = isSafeForToolkit(tiff.get());
    // A vector's bytes are aligned for any number; libtiff puts red into the lowest byte of each.
    auto* const pixels = reinterpret_cast<std::uint32_t*>(picture.pixels.bytes.data());
    if (::TIFFRGBAImageGet(&image, pixels, image.width, image.height) != 1)
        throw damaged(source);
    bool const isGrey =
        image.photometric == PHOTOMETRIC_MINISBLACK || image.photometric == PHOTOMETRIC_MINISWHITE;
    narrow(picture.pixels, isGrey, image.alpha != 0);
    return picture;
}
