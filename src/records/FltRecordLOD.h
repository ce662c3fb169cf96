#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A level of detail: what stands below it is shown at some distances only, from the switch-in distance
/// inwards and down to the switch-out distance. Distances and centre are in database units.
class FltRecordLOD : public FltRecordOf<FltRecordLOD, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::lod;
    static constexpr std::string_view title = "\n LEVEL_OF_DETAIL (LOD) RECORD ";

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::int32_t reserved = 0;
    double switchInDistance = 0;
    double switchOutDistance = 0;
    std::int16_t id1specialEffect = 0;
    std::int16_t id2specialEffect = 0;
    std::uint32_t flags = 0;
    double XcenterCoordinate = 0;
    double YcenterCoordinate = 0;
    double ZcenterCoordinate = 0;
    double transitionRange = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("switchInDistance", self.switchInDistance);
        visit("switchOutDistance", self.switchOutDistance);
        visit("id1specialEffect", self.id1specialEffect);
        visit("id2specialEffect", self.id2specialEffect);
        visit("flags", self.flags, dumpAs::heading);
        visit.flag("usePreviousSlantRange", self.flags, 31, "      Use Previous Slant Range: ");
        visit.flag("freezeCenter", self.flags, 29, "      FreezeCenter (don't recalculate): ");
        visit("XcenterCoordinate", self.XcenterCoordinate);
        visit("YcenterCoordinate", self.YcenterCoordinate);
        visit("ZcenterCoordinate", self.ZcenterCoordinate);
        visit("transitionRange", self.transitionRange);
    }
};

/// The same with what newer revisions have after it. No record of the factory.
class FltRecordLongLOD : public FltRecordLOD
{
public:
    using FltRecordLOD::FltRecordLOD;

    double significantSize = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        FltRecordLOD::fields(self, visit);
        visit("significantSize", self.significantSize);
    }
};

/// A level of detail in its old form: distances and centre in whole database units.
class FltRecordOLDLOD : public FltRecordOf<FltRecordOLDLOD, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::oldLOD;
    static constexpr std::string_view title = "\n OLD LEVEL_OF_DETAIL (LOD) RECORD (OBSOLETE) ";

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::uint32_t switchInDistance = 0;
    std::uint32_t switchOutDistance = 0;
    std::int16_t id1specialEffect = 0;
    std::int16_t id2specialEffect = 0;
    std::uint32_t flags = 0;
    std::int32_t XcenterCoordinate = 0;
    std::int32_t YcenterCoordinate = 0;
    std::int32_t ZcenterCoordinate = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("switchInDistance", self.switchInDistance);
        visit("switchOutDistance", self.switchOutDistance);
        visit("id1specialEffect", self.id1specialEffect);
        visit("id2specialEffect", self.id2specialEffect);
        visit("flags", self.flags, dumpAs::heading);
        visit.flag("usePreviousSlantRange", self.flags, 31, "      Use Previous Slant Range: ");
        visit.flag("spt", self.flags, 30, "      SPT Flag: ");
        visit.flag("freezeCenter", self.flags, 29, "      FreezeCenter (don't recalculate): ");
        visit("XcenterCoordinate", self.XcenterCoordinate);
        visit("YcenterCoordinate", self.YcenterCoordinate);
        visit("ZcenterCoordinate", self.ZcenterCoordinate);
    }
};
