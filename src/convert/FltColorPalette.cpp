#include "convert/FltColorPalette.h"

void FltColorPalette::assign(FltRecordColorPalette const& record)
{
    for (int i = 0; i < FltRecordColorPalette::colorCount; ++i)
        colors[i] = record.getPackedColor(i);
}

std::uint32_t FltColorPalette::getPacked(std::int64_t position) const
{
    return position >= 0 && position < FltRecordColorPalette::colorCount ? colors[position] : white;
}

SbColor FltColorPalette::unpack(std::uint32_t packedColor)
{
    SbColor color;
    float transparency = 0;
    color.setPackedValue(packedColor, transparency);
    return color;
}
