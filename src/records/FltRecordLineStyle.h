#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// One entry of the line style table.
class FltRecordLineStylePalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::lineStylePalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
