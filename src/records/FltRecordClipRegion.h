#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A node that cuts with up to five planes.
///
/// | Offset | Type          | Field            |                                                       |
/// |--------|---------------|------------------|-------------------------------------------------------|
/// | 4      | char[8]       | `idASCII`        | name, which the node of the scene graph takes         |
/// | 12     | int32         | `reserved1`      |                                                       |
/// | 16     | int16         | `reserved2`      |                                                       |
/// | 18     | uint8[6]      | `flags`          | one for each plane, 1 enables it; the sixth has no plane |
/// | 24     | float64[3]    | `clipRegion1`    | x, y, z of a corner of the region                     |
/// | 48     | float64[3]    | `clipRegion2`    |                                                       |
/// | 72     | float64[3]    | `clipRegion3`    |                                                       |
/// | 96     | float64[3]    | `clipRegion4`    |                                                       |
/// | 120    | float64[4][5] | `clipRegionCoefs` | coefficients A of the five planes, then B, C and D   |
class FltRecordClipRegion : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::clipRegion; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Whether the flag of a plane is exactly 1. Any other value, and a plane without a flag, is false.
    bool isEnabledClipPlane(int plane) const;

    /// Number of clip planes.
    static int getUsedFlags() { return 5; }

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::int32_t reserved1 = 0;
    std::int16_t reserved2 = 0;
    std::uint8_t flags[6] = {};
    double clipRegion1[3] = {};
    double clipRegion2[3] = {};
    double clipRegion3[3] = {};
    double clipRegion4[3] = {};
    double clipRegionCoefs[4][5] = {}; ///< First index the coefficient, A to D, second the plane, 0 to 4.
};
