#include "textures/PictureAlpha.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace
{

/// A pixel is clear below a tenth, and opaque above nine tenths.
constexpr unsigned char mostOfClear = 25, leastOfOpaque = 230;

/// At most one pixel of so many may be neither.
constexpr std::size_t pixelsForAGradedOne = 20;

/// Places between two pixels at which is looked, in each direction.
constexpr int places = 4;

/// Of larger pictures only some rows are looked at.
constexpr std::size_t manyBytes = 1U << 24;

/// What counts as much: a change of this part is not seen.
constexpr double slightly = 0.05;

/// How much of the square between four pixels is above a half: 0 to 1.
double coverageBetween(std::array<int, 4> const& corners)
{
    auto const isAbove = [](double alpha) { return alpha > 127.5; };
    int above = 0;
    for (int const corner : corners)
        above += isAbove(corner) ? 1 : 0;
    if (above == 0 || above == 4)
        return above == 0 ? 0 : 1;
    int covered = 0;
    for (int x = 0; x < places; ++x)
        for (int y = 0; y < places; ++y) {
            double const right = (x + 0.5) / places, up = (y + 0.5) / places;
            double const low = corners[0] * (1 - right) + corners[1] * right;
            double const high = corners[2] * (1 - right) + corners[3] * right;
            covered += isAbove(low * (1 - up) + high * up) ? 1 : 0;
        }
    return static_cast<double>(covered) / (places * places);
}

} // namespace

bool hasAlpha(PicturePixels const& picture)
{
    return picture.components == 2 || picture.components == 4;
}

PicturePixels withoutAlpha(PicturePixels const& picture)
{
    auto const before = static_cast<std::size_t>(picture.components);
    PicturePixels result{picture.width, picture.height, picture.components - 1, {}};
    result.bytes.reserve(picture.bytes.size() / before * (before - 1));
    for (std::size_t i = 0; i < picture.bytes.size(); ++i)
        if (i % before != before - 1)
            result.bytes.push_back(picture.bytes[i]);
    return result;
}

PictureAlpha alphaOf(PicturePixels const& picture)
{
    if (picture.components != 2 && picture.components != 4)
        return PictureAlpha::none;
    auto const step = static_cast<std::size_t>(picture.components);
    std::size_t graded = 0;
    bool hidesAny = false;
    for (std::size_t at = step - 1; at < picture.bytes.size(); at += step) {
        unsigned char const alpha = picture.bytes[at];
        hidesAny = hidesAny || alpha != 255;
        graded += alpha > mostOfClear && alpha < leastOfOpaque ? 1 : 0;
    }
    if (!hidesAny)
        return PictureAlpha::none;
    return graded * pixelsForAGradedOne * step <= picture.bytes.size() ? PictureAlpha::cutOut
                                                                       : PictureAlpha::graded;
}

bool coversAsMuchWhenSmooth(PicturePixels const& picture)
{
    auto const alphaAt = [&](int x, int y) -> int { // pictures are repeated
        std::size_t const pixel =
            static_cast<std::size_t>(y % picture.height) * static_cast<std::size_t>(picture.width) +
            static_cast<std::size_t>(x % picture.width);
        return picture.bytes[(pixel + 1) * static_cast<std::size_t>(picture.components) - 1];
    };
    int const step = 1 + static_cast<int>(picture.bytes.size() / manyBytes);
    double alone = 0;
    double smooth = 0;
    for (int y = 0; y < picture.height; y += step)
        for (int x = 0; x < picture.width; ++x) {
            alone += alphaAt(x, y) > 127 ? 1 : 0;
            smooth +=
                coverageBetween({alphaAt(x, y), alphaAt(x + 1, y), alphaAt(x, y + 1), alphaAt(x + 1, y + 1)});
        }
    return std::abs(smooth - alone) <= slightly * alone;
}
