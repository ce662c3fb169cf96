#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// One entry of the line style table.
///
/// | Offset | Type  | Field            |
/// |--------|-------|------------------|
/// | 4      | int16 | `lineStyleIndex` |
/// | 6      | int16 | `patternMask`    |
/// | 8      | int32 | `lineWidth`      |
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
};
