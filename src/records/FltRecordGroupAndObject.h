#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"
#include "records/FltVersion.h"

#include <cstdint>

/// A node that gathers the nodes of the level below it.
class FltRecordGroup : public FltRecordOf<FltRecordGroup, PrimaryFltRecord>, public FltVersion
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::group;
    static constexpr std::string_view title = "\n GROUP RECORD ";

    /// Not terminated when it fills its eight characters. Aligned so that the member after it follows
    /// without a gap.
    alignas(std::int32_t) char idASCII[8] = {};
    std::int16_t relativePriority = 0;
    std::int16_t reserved1 = 0;
    std::uint32_t flags = 0;
    std::int16_t id1SpecialEffect = 0;
    std::int16_t id2SpecialEffect = 0;
    std::int16_t significance = 0;
    std::int8_t layerCode = 0;
    std::int8_t reserved2 = 0;
    std::int32_t reserved3 = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self + 1));
        visit("relativePriority", self.relativePriority);
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("flags", self.flags, dumpAs::heading);
        visit.flag("forwardAnimation", self.flags, 30, "     forward animation: ");
        visit.flag("swingAnimation", self.flags, 29, "     swing animation: ");
        visit.flag("boundingBoxFollows", self.flags, 28, "     bounding box follows: ");
        visit.flag("freezeBoundingBox", self.flags, 27, "     freeze bounding box: ");
        visit.flag("defaultParent", self.flags, 26, "     default parent: ");
        visit.flag("backwardAnimation", self.flags, 25, "     backward animation: ");
        visit("id1SpecialEffect", self.id1SpecialEffect);
        visit("id2SpecialEffect", self.id2SpecialEffect);
        visit("significance", self.significance);
        visit("layerCode", self.layerCode);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        if (visit.from(self.revision, 1421))
            visit("reserved3", self.reserved3, dumpAs::nothing);
    }
};

/// The same with what newer revisions have after it: how its children are played, one after the other. No
/// record of the factory.
class FltRecordAnimatedGroup : public FltRecordGroup
{
public:
    using FltRecordGroup::FltRecordGroup;

    std::int32_t loopCount = 0;  ///< 0 for without end.
    float loopDuration = 0;      ///< In seconds.
    float lastFrameDuration = 0; ///< In seconds.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        FltRecordGroup::fields(self, visit);
        if (!visit.from(self.revision, 1421))
            visit.skip(4);
        visit("loopCount", self.loopCount);
        visit("loopDuration", self.loopDuration);
        visit("lastFrameDuration", self.lastFrameDuration);
    }
};

/// A node that holds faces. In the dump the flags come after the transparency.
class FltRecordObject : public FltRecordOf<FltRecordObject, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::object;
    static constexpr std::string_view title = "\n OBJECT RECORD ";

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::uint32_t flags = 0;
    std::int16_t relativePriority = 0;
    std::uint16_t transparency = 0;
    std::int16_t id1SpecialEffect = 0;
    std::int16_t id2SpecialEffect = 0;
    std::int16_t significance = 0;
    std::int16_t spare = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self.spare + 1));
        visit("flags", self.flags, dumpAs::nothing);
        visit("relativePriority", self.relativePriority);
        visit("transparency", self.transparency);
        visit.show("flags: ");
        visit.flag("notInDaylight", self.flags, 31, "don t display in daylight: ");
        visit.flag("notAtDusk", self.flags, 30, " ---------    at dusk: ");
        visit.flag("notAtNight", self.flags, 29, " ---------    at night: ");
        visit.flag("notIlluminated", self.flags, 28, "don t illuminate: ");
        visit.flag("flatShaded", self.flags, 27, "flat shaded: ");
        visit.flag("groupsShadow", self.flags, 26, "group's shadow object: ");
        visit("id1SpecialEffect", self.id1SpecialEffect);
        visit("id2SpecialEffect", self.id2SpecialEffect);
        visit("significance", self.significance);
        visit("spare", self.spare);
    }
};
