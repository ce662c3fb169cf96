#include "model/FltColors.h"

#include "records/FltRecordColorPalette.h"

namespace
{

/// An index holds a position in the palette above seven bits of intensity.
constexpr int intensityBits = 7;
constexpr std::uint32_t fullIntensity = 127;

std::uint32_t scaled(std::uint32_t color, std::uint32_t intensity)
{
    std::uint32_t result = 0xff;
    for (int shift = 24; shift >= 8; shift -= 8)
        result |= ((color >> shift & 0xff) * intensity + fullIntensity / 2) / fullIntensity << shift;
    return result;
}

} // namespace

void FltColors::assign(FltRecordView const& record, int revision)
{
    FltDecoded<FltRecordColorPalette> const palette(record, revision);
    colors.clear();
    for (int i = 0; i < FltRecordColorPalette::colorCount; ++i)
        colors.push_back(palette.getPackedColor(i) | 0xffU);
}

std::uint32_t FltColors::atIndex(std::int32_t index) const
{
    std::int32_t const position = index >> intensityBits;
    if (position < 0 || static_cast<std::size_t>(position) >= colors.size())
        return white;
    return scaled(colors[static_cast<std::size_t>(position)],
                  static_cast<std::uint32_t>(index) & fullIntensity);
}
