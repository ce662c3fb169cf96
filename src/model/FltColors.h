#pragma once

#include "model/FltRecordView.h"

#include <cstdint>
#include <vector>

/// The colour palette of a file. Colours are words of red, green, blue and 255, red highest.
class FltColors
{
public:
    static constexpr std::uint32_t white = ~0U;

    /// Takes over the colours of a palette record.
    void assign(FltRecordView const& record, int revision);

    /// The colour of an index, at its intensity; white for an index that the palette doesn't hold.
    std::uint32_t atIndex(std::int32_t index) const;

    /// The colour of a packed word of the format, which is alpha, blue, green and red.
    static std::uint32_t fromPacked(std::uint32_t word)
    {
        return word << 24 | (word & 0xff00U) << 8 | (word >> 8 & 0xff00U) | 0xffU;
    }

private:
    std::vector<std::uint32_t> colors;
};
