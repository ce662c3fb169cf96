#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A node that cuts with up to five planes.
class FltRecordClipRegion : public FltRecordOf<FltRecordClipRegion, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::clipRegion;
    static constexpr std::string_view title = "\n CLIP REGION RECORD ";

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

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("reserved1", self.reserved1);
        visit("reserved2", self.reserved2);
        visit("flags", self.flags, dumpAs::pointer);
        visit("clipRegion1", self.clipRegion1, dumpAs::list(" "));
        visit("clipRegion2", self.clipRegion2, dumpAs::list(" "));
        visit("clipRegion3", self.clipRegion3, dumpAs::list(" "));
        visit("clipRegion4", self.clipRegion4, dumpAs::list(" "));
        visit.show("clipRegionCoefs: ");
        visit("clipRegionCoefs", self.clipRegionCoefs, dumpAs::rows(5));
    }
};
