// Decodes any bytes as a picture. Made once for each format: what doesn't begin as its files do gets their
// beginning.

#include "textures/Picture.h"
#include "textures/PictureBytes.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace
{

/// The ending of the format's files, and their first bytes.
constexpr std::string_view ending = VELLOREADER_ENDING;

constexpr std::string_view beginOf(std::string_view format)
{
    using namespace std::string_view_literals;
    return format == "png"   ? "\x89PNG\r\n\x1a\n"sv
           : format == "jpg" ? "\xff\xd8\xff"sv
           : format == "tif" ? "II*\0"sv
           : format == "gif" ? "GIF89a"sv
           : format == "rgb" ? "\x01\xda"sv
                             : ""sv;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::vector<unsigned char> bytes(data, data + size);
    constexpr std::string_view begin = beginOf(ending);
    std::string const name = "a." + std::string(ending);
    bool const isBigEndianTiff = ending == "tif" && size > 0 && bytes[0] == 'M';
    if (!isBigEndianTiff)
        std::copy_n(begin.begin(), std::min(begin.size(), size), bytes.begin());
    Picture const picture = Picture::decode(PictureBytes(bytes), name);
    if (picture.pixels == nullptr)
        return 0;
    PicturePixels const& pixels = *picture.pixels;
    bool const isWhole = pixels.bytes.size() == std::size_t(pixels.width) * std::size_t(pixels.height) *
                                                    std::size_t(pixels.components);
    volatile unsigned sum = std::accumulate(pixels.bytes.begin(), pixels.bytes.end(), 0U);
    static_cast<void>(sum);
    if (!isWhole || !picture.problem.empty())
        std::abort();
    return 0;
}
