#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
#include <jerror.h>
#include <jpeglib.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace
{

/// Encoders make about ten, and one for each bit of each channel would be fewer than these. The library goes
/// over all pixels for each, and a scan may be a few bytes long.
constexpr int mostScans = 100;

/// A picture with more of them shows nothing that anybody would look at.
constexpr long mostWarnings = 10'000;

/// libjpeg's state. An error jumps out of it, so nothing that has to be destroyed may stand between run()
/// and libjpeg.
class Decoder
{
public:
    explicit Decoder(PictureBytes const& file) : file(file)
    {
        state.err = ::jpeg_std_error(&errors);
        state.client_data = this;
        errors.error_exit = fail;
        errors.emit_message = countWarnings;
        progress.progress_monitor = countScans;
    }
    ~Decoder() { ::jpeg_destroy_decompress(&state); }
    Decoder(Decoder const&) = delete;
    Decoder& operator=(Decoder const&) = delete;

    DecodedPicture decode()
    {
        if (!readHead())
            throw PictureProblem(wordsOf(message));
        bool const isGrey = state.out_color_space == JCS_GRAYSCALE;
        bool const hasInks = state.out_color_space == JCS_CMYK;
        if (::jpeg_has_multiple_scans(&state) == TRUE) {
            // The library keeps the numbers of all scans, two bytes each, besides the pixels.
            constexpr std::uint64_t bytesOfSample = 3;
            DecodedPicture::checkSize(state.image_width, state.image_height,
                                      bytesOfSample * static_cast<std::uint64_t>(state.num_components), file);
        }
        picture = DecodedPicture(state.image_width, state.image_height, isGrey ? 1 : 3, file);
        picture.isSafeForToolkit = !hasInks;
        inks.resize(hasInks ? 4 * picture.width() : 0);
        if (!readRows())
            throw PictureProblem(wordsOf(message));
        if (damage.front() != '\0')
            picture.damage = wordsOf(damage);
        return std::move(picture);
    }

private:
    bool readHead()
    {
        if (setjmp(jump) != 0) // NOLINT(cert-err52-cpp): libjpeg can't be left in another way
            return false;
        ::jpeg_create_decompress(&state);
        state.progress = &progress;
        ::jpeg_mem_src(&state, file.data(), static_cast<unsigned long>(file.size()));
        ::jpeg_read_header(&state, TRUE);
        switch (state.jpeg_color_space) {
        case JCS_GRAYSCALE:
            state.out_color_space = JCS_GRAYSCALE;
            return true;
        case JCS_RGB:
        case JCS_YCbCr:
            state.out_color_space = JCS_RGB;
            return true;
        case JCS_CMYK:
        case JCS_YCCK:
            state.out_color_space = JCS_CMYK;
            return true;
        default:
            setMessage("its colours are of no kind that is read");
            return false;
        }
    }

    bool readRows()
    {
        if (setjmp(jump) != 0) // NOLINT(cert-err52-cpp)
            return false;
        ::jpeg_start_decompress(&state);
        while (state.output_scanline < state.output_height) {
            unsigned char* const row = picture.rowFromTop(state.output_scanline);
            JSAMPROW to = inks.empty() ? row : inks.data();
            ::jpeg_read_scanlines(&state, &to, 1);
            if (!inks.empty())
                mixInks(row);
        }
        ::jpeg_finish_decompress(&state);
        return true;
    }

    /// Makes colours from a row of cyan, magenta, yellow and black. Files that say who wrote them have each
    /// as the light that it lets through.
    void mixInks(unsigned char* row) const
    {
        unsigned const turn = state.saw_Adobe_marker == TRUE ? 0U : 255U;
        for (std::size_t x = 0; x < picture.width(); ++x) {
            unsigned const black = inks[4 * x + 3] ^ turn;
            for (std::size_t color = 0; color < 3; ++color)
                row[3 * x + color] =
                    static_cast<unsigned char>(((inks[4 * x + color] ^ turn) * black + 127) / 255);
        }
    }

    using Text = std::array<char, JMSG_LENGTH_MAX>;

    static std::string wordsOf(Text const& text)
    {
        return "is a damaged JPEG picture (" + std::string(text.data()) + ")";
    }

    void setMessage(std::string_view text)
    {
        std::copy_n(text.data(), std::min(text.size(), message.size() - 1), message.data());
    }

    static Decoder& self(j_common_ptr state) { return *static_cast<Decoder*>(state->client_data); }

    [[noreturn]] static void stop(j_common_ptr state)
    {
        std::longjmp(self(state).jump, 1); // NOLINT(cert-err52-cpp)
    }

    [[noreturn]] static void fail(j_common_ptr state)
    {
        Text text{};
        state->err->format_message(state, text.data());
        self(state).setMessage(text.data());
        stop(state);
    }

    static void countWarnings(j_common_ptr state, int level)
    {
        bool const isWarning = level < 0;
        if (!isWarning)
            return;
        if (losesPixels(state->err->msg_code) && self(state).damage.front() == '\0')
            state->err->format_message(state, self(state).damage.data());
        if (++state->err->num_warnings <= mostWarnings)
            return;
        self(state).setMessage("it is damaged in too many places");
        stop(state);
    }

    /// Whether a warning is one of damage, rather than of something that stands there besides.
    static bool losesPixels(int warning)
    {
        return warning != JWRN_EXTRANEOUS_DATA && warning != JWRN_ADOBE_XFORM && warning != JWRN_JFIF_MAJOR;
    }

    static void countScans(j_common_ptr state)
    {
        if (reinterpret_cast<j_decompress_ptr>(state)->input_scan_number <= mostScans)
            return;
        self(state).setMessage("it comes in more parts than anybody makes");
        stop(state);
    }

    PictureBytes const& file;
    jpeg_decompress_struct state{};
    jpeg_error_mgr errors{};
    jpeg_progress_mgr progress{};
    std::jmp_buf jump{};
    Text message{}; ///< Why there is no picture.
    Text damage{};  ///< What is wrong with it first; empty if nothing is.
    DecodedPicture picture;
    std::vector<unsigned char> inks; ///< A row of them; empty if the picture has none.
};

} // namespace

DecodedPicture PictureFormats::decodeJpeg(PictureBytes const& file)
{
    return Decoder(file).decode();
}
