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

    /// The colour of packed bytes of the format, which are alpha, blue, green and red.
    static std::uint32_t fromPacked(std::uint8_t const (&bytes)[4])
    {
        return std::uint32_t(bytes[3]) << 24 | std::uint32_t(bytes[2]) << 16 | std::uint32_t(bytes[1]) << 8 |
               0xffU;
    }

private:
    std::vector<std::uint32_t> colors;
};
