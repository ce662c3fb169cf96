#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <limits>
#include <png.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

/// libpng's state, and what its functions are given. An error jumps out of it, so nothing that has to be
/// destroyed may stand between run() and libpng.
class Decoder
{
public:
    explicit Decoder(PictureBytes const& file)
        : file(file), png(::png_create_read_struct(PNG_LIBPNG_VER_STRING, this, fail, saySilently)),
          info(png != nullptr ? ::png_create_info_struct(png) : nullptr)
    {
    }
    ~Decoder() { ::png_destroy_read_struct(&png, &info, nullptr); }
    Decoder(Decoder const&) = delete;
    Decoder& operator=(Decoder const&) = delete;

    DecodedPicture decode()
    {
        constexpr std::size_t firstChunk = 12;
        if (!PictureBytes(file.data() + firstChunk, file.countAt(firstChunk, 4)).begins("IHDR"))
            throw PictureProblem("is a damaged PNG picture (it doesn't begin with its head)");
        if (info == nullptr)
            throw PictureProblem("is a PNG picture for which the memory doesn't suffice");
        if (!readHead())
            throw PictureProblem(words());
        picture = DecodedPicture(::png_get_image_width(png, info), ::png_get_image_height(png, info),
                                 ::png_get_channels(png, info), file);
        for (std::size_t y = 0; y < picture.height(); ++y)
            rows.push_back(picture.rowFromTop(y));
        if (!readRows())
            throw PictureProblem(words());
        return std::move(picture);
    }

private:
    bool readHead()
    {
        if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): libpng's way to report an error
            return false;
        setLimits();
        ::png_set_read_fn(png, this, read);
        ::png_read_info(png, info);
        ::png_set_strip_16(png);
        ::png_set_expand(png);
        ::png_set_interlace_handling(png);
        ::png_read_update_info(png, info);
        return true;
    }

    bool readRows()
    {
        if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp)
            return false;
        ::png_read_image(png, rows.data());
        ::png_read_end(png, nullptr);
        return true;
    }

    void setLimits()
    {
        constexpr png_uint_32 longestSide = std::numeric_limits<short>::max();
        constexpr png_alloc_size_t mostOfAChunk = 1U << 20;
        ::png_set_user_limits(png, longestSide, longestSide);
        ::png_set_chunk_malloc_max(png, mostOfAChunk);
        ::png_set_chunk_cache_max(png, 16);
        // Text, profiles and the like are passed over: nobody looks at them, and some are compressed.
        static constexpr std::array<png_byte, 5 * 11> unused = {
            'i', 'C', 'C', 'P', 0,   't', 'E', 'X', 't', 0,   'z', 'T', 'X', 't', 0,   'i', 'T', 'X', 't',
            0,   's', 'P', 'L', 'T', 0,   'e', 'X', 'I', 'f', 0,   'h', 'I', 'S', 'T', 0,   'p', 'C', 'A',
            'L', 0,   's', 'C', 'A', 'L', 0,   't', 'I', 'M', 'E', 0,   'o', 'F', 'F', 's', 0};
        ::png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, unused.data(), unused.size() / 5);
    }

    std::string words() const { return "is a damaged PNG picture (" + std::string(message.data()) + ")"; }

    static void read(png_structp png, png_bytep to, std::size_t count)
    {
        auto& self = *static_cast<Decoder*>(::png_get_io_ptr(png));
        if (!self.file.holds(self.place, count))
            ::png_error(png, "it ends before its end");
        std::copy_n(self.file.data() + self.place, count, to);
        self.place += count;
    }

    [[noreturn]] static void fail(png_structp png, png_const_charp text)
    {
        auto& message = static_cast<Decoder*>(::png_get_error_ptr(png))->message;
        std::string_view const words = text;
        std::copy_n(words.data(), std::min(words.size(), message.size() - 1), message.data());
        ::png_longjmp(png, 1);
    }
    static void saySilently(png_structp /*png*/, png_const_charp /*text*/) {}

    PictureBytes const& file;
    std::size_t place = 0;
    std::array<char, 100> message{};
    png_structp png;
    png_infop info;
    DecodedPicture picture;
    std::vector<png_bytep> rows;
};

} // namespace

DecodedPicture PictureFormats::decodePng(PictureBytes const& file)
{
    return Decoder(file).decode();
}
