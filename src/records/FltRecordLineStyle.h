#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// One entry of the line style table.
class FltRecordLineStylePalette : public FltRecordOf<FltRecordLineStylePalette, PaletteFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::lineStylePalette;
    static constexpr std::string_view title = "\n LINE STYLE PALETTE RECORD ";

    std::int16_t lineStyleIndex = 0; ///< Slot in the line style table.
    std::int16_t patternMask = 0;    ///< A bit for each pixel of the pattern. Printed as a signed number.
    std::int32_t lineWidth = 0;      ///< In pixels.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("lineStyleIndex", self.lineStyleIndex, "lineStyleIndex : ");
        visit("patternMask", self.patternMask, "patternMask : ");
        visit("lineWidth", self.lineWidth, "lineWidth : ");
    }
};
