#include "support/MadePictures.h"

#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>

using namespace MadePictures;

namespace
{

struct Kind {
    J_COLOR_SPACE given;  ///< What the encoder gets,
    J_COLOR_SPACE stored; ///< and what it makes of it.
    bool isProgressive = false;
    bool isHalved = false; ///< In the colours, each way.
    bool hasRestarts = false;
    bool isSigned = true; ///< Says by a marker which program family it is from.
};

int channelsOf(J_COLOR_SPACE space)
{
    return space == JCS_GRAYSCALE ? 1 : space == JCS_CMYK ? 4 : 3;
}

/// Two plain fields beside each other, or one where the colours are halved, so that little is lost.
int fieldValue(Kind const& kind, int x, int channel)
{
    constexpr int values[2][4] = {{200, 60, 30, 20}, {40, 90, 160, 70}};
    return values[x < 16 || kind.isHalved ? 0 : 1][channel];
}

constexpr int jpegWidth = 32;
constexpr int jpegHeight = 16;

std::string fileOf(Kind const& kind)
{
    jpeg_error_mgr errors;
    jpeg_compress_struct state = {};
    state.err = ::jpeg_std_error(&errors);
    ::jpeg_create_compress(&state);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    ::jpeg_mem_dest(&state, &bytes, &size);
    state.image_width = jpegWidth;
    state.image_height = jpegHeight;
    state.input_components = channelsOf(kind.given);
    state.in_color_space = kind.given;
    ::jpeg_set_defaults(&state);
    ::jpeg_set_colorspace(&state, kind.stored);
    constexpr int best = 100;
    ::jpeg_set_quality(&state, best, TRUE);
    for (int i = 0; i < state.num_components; ++i)
        state.comp_info[i].h_samp_factor = state.comp_info[i].v_samp_factor = kind.isHalved && i == 0 ? 2 : 1;
    if (kind.isProgressive)
        ::jpeg_simple_progression(&state);
    if (kind.hasRestarts)
        state.restart_interval = 1;
    if (!kind.isSigned)
        state.write_Adobe_marker = FALSE;
    ::jpeg_start_compress(&state, TRUE);
    for (int y = 0; y < jpegHeight; ++y) {
        std::string row;
        for (int i = 0; i < jpegWidth * state.input_components; ++i)
            row += byteOf(fieldValue(kind, i / state.input_components, i % state.input_components));
        auto* line = reinterpret_cast<JSAMPROW>(row.data());
        ::jpeg_write_scanlines(&state, &line, 1);
    }
    ::jpeg_finish_compress(&state);
    ::jpeg_destroy_compress(&state);
    std::string const file(reinterpret_cast<char const*>(bytes), size);
    std::free(bytes); // NOLINT(cppcoreguidelines-no-malloc): libjpeg's own
    return file;
}

/// The light that the inks leave.
int mixed(int ink, int black, bool isSigned)
{
    return isSigned ? ink * black / 255 : (255 - ink) * (255 - black) / 255;
}

MadePicture make(std::string const& name, Kind const& kind,
                 MadePicture::Toolkit toolkit = MadePicture::Toolkit::agrees)
{
    bool const hasInks = kind.given == JCS_CMYK;
    int const components = hasInks ? 3 : channelsOf(kind.given);
    std::string pixels;
    for (int i = 0; i < jpegWidth * jpegHeight * components; ++i) {
        int const x = i / components % jpegWidth;
        int const value = fieldValue(kind, x, i % components);
        pixels += byteOf(hasInks ? mixed(value, fieldValue(kind, x, 3), kind.isSigned) : value);
    }
    constexpr int tolerance = 3;
    return {name + ".jpg", fileOf(kind), jpegWidth, jpegHeight, components, pixels, toolkit, tolerance};
}

} // namespace

std::vector<MadePicture> MadePictures::jpeg()
{
    using Toolkit = MadePicture::Toolkit;
    return {
        make("grey", {JCS_GRAYSCALE, JCS_GRAYSCALE}),
        make("color", {JCS_RGB, JCS_YCbCr}),
        make("halved", {JCS_RGB, JCS_YCbCr, false, true}),
        make("restarts", {JCS_RGB, JCS_YCbCr, false, false, true}),
        make("rgb", {JCS_RGB, JCS_RGB}, Toolkit::refuses),
        make("progressive", {JCS_RGB, JCS_YCbCr, true}),
        make("progressive_grey", {JCS_GRAYSCALE, JCS_GRAYSCALE, true}),
        make("progressive_halved", {JCS_RGB, JCS_YCbCr, true, true}),
        make("inks", {JCS_CMYK, JCS_CMYK}, Toolkit::refuses),
        make("inks_unsigned", {JCS_CMYK, JCS_CMYK, false, false, false, false}, Toolkit::refuses),
        make("inks_by_light", {JCS_CMYK, JCS_YCCK}, Toolkit::refuses),
        make("progressive_inks", {JCS_CMYK, JCS_YCCK, true}, Toolkit::refuses),
    };
}
