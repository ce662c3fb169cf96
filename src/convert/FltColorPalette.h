#pragma once

#include "records/FltRecordColorPalette.h"

#include <Inventor/SbColor.h>
#include <cstdint>

/// The colours of a file, each packed in the toolkit's way: red in the top byte, alpha in the lowest.
///
/// A colour index of the format holds a position in the palette above seven bits of intensity.
class FltColorPalette
{
public:
    static constexpr std::uint32_t white = 0xffffffff;
    static constexpr std::uint32_t black = 0x000000ff;

    /// Steps of intensity in an index.
    static constexpr int intensities = 128;

    /// Where positions are checked, the highest that passes. The palette ends long before.
    static constexpr std::uint32_t lastPosition = 131072;

    static int positionOf(int colorIndex) { return colorIndex >> 7; }

    /// From 0 for black to 1 for the colour at full strength.
    static float intensityOf(int colorIndex)
    {
        return static_cast<float>(colorIndex & (intensities - 1)) / static_cast<float>(intensities - 1);
    }

    /// Takes over all colours of a record.
    void assign(FltRecordColorPalette const& record);

    /// The packed colour at a position; white where the palette has none.
    std::uint32_t getPacked(std::int64_t position) const;

    /// The same without its alpha.
    SbColor getColor(std::int64_t position) const { return unpack(getPacked(position)); }

    /// A packed colour without its alpha.
    static SbColor unpack(std::uint32_t packedColor);

private:
    std::uint32_t colors[FltRecordColorPalette::colorCount] = {};
};
