#include "records/FltRecordClipRegion.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

#include <iterator>

bool FltRecordClipRegion::isEnabledClipPlane(int plane) const
{
    return plane >= 0 && plane < static_cast<int>(std::size(flags)) && flags[plane] == 1;
}

std::ostream& FltRecordClipRegion::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n CLIP REGION RECORD ");
}

void FltRecordClipRegion::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved1, cursor);
    FltUtils::getInt16ValueThenDecal(&reserved2, cursor);
    FltUtils::getBytesThenDecal(flags, sizeof flags, cursor);
    FltUtils::getDouble64ValuesThenDecal(clipRegion1, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(clipRegion2, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(clipRegion3, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(clipRegion4, 3, cursor);
    for (double(&coefficient)[5] : clipRegionCoefs)
        FltUtils::getDouble64ValuesThenDecal(coefficient, 5, cursor);
}

std::ostream& FltRecordClipRegion::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "reserved1: ", reserved1);
    FltDump::line(os, "reserved2: ", reserved2);
    FltDump::pointer(os, "flags: ", static_cast<void const*>(flags));
    FltDump::list(os, "clipRegion1: ", clipRegion1, 3, " ");
    FltDump::list(os, "clipRegion2: ", clipRegion2, 3, " ");
    FltDump::list(os, "clipRegion3: ", clipRegion3, 3, " ");
    FltDump::list(os, "clipRegion4: ", clipRegion4, 3, " ");
    FltDump::line(os, "clipRegionCoefs: ");
    for (double const(&coefficient)[5] : clipRegionCoefs)
        FltDump::rows(os, coefficient, 1, 5);
    return os;
}
