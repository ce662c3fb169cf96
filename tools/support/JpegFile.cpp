#include "support/JpegFile.h"

#include <algorithm>
#include <array>
#include <jpeglib.h>
#include <stdexcept>

namespace
{

/// High enough that edges and captions stay clean.
constexpr int quality = 92;

[[noreturn]] void fail(j_common_ptr compressor)
{
    std::array<char, JMSG_LENGTH_MAX> text{};
    compressor->err->format_message(compressor, text.data());
    throw std::runtime_error(text.data());
}

/// The library's compressor, given back whatever happens.
struct Compressor {
    jpeg_error_mgr errors{};
    jpeg_compress_struct state{};

    Compressor()
    {
        state.err = jpeg_std_error(&errors);
        errors.error_exit = fail;
        jpeg_create_compress(&state);
    }
    ~Compressor() { jpeg_destroy_compress(&state); }
    Compressor(Compressor const&) = delete;
    Compressor& operator=(Compressor const&) = delete;
};

void compress(Picture const& picture, FILE* file)
{
    Compressor compressor;
    jpeg_compress_struct& state = compressor.state;
    jpeg_stdio_dest(&state, file);
    state.image_width = static_cast<JDIMENSION>(picture.width);
    state.image_height = static_cast<JDIMENSION>(picture.height);
    state.input_components = 3;
    state.in_color_space = JCS_RGB;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, quality, TRUE);
    jpeg_start_compress(&state, TRUE);
    std::vector<unsigned char> row(static_cast<std::size_t>(picture.width) * 3);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x)
            std::copy_n(picture.at(x, y), 3, row.begin() + static_cast<std::ptrdiff_t>(x) * 3);
        JSAMPROW rows[] = {row.data()};
        jpeg_write_scanlines(&state, rows, 1);
    }
    jpeg_finish_compress(&state);
}

} // namespace

std::string writeJpeg(Picture const& picture, FILE* file)
{
    try {
        compress(picture, file);
        return "";
    } catch (std::runtime_error const& problem) {
        return std::ferror(file) != 0 ? "" : problem.what();
    }
}
