#include "records/FltRecordLOD.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordLOD::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LEVEL_OF_DETAIL (LOD) RECORD ");
}

void FltRecordLOD::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&switchInDistance, cursor);
    FltUtils::getDouble64ValueThenDecal(&switchOutDistance, cursor);
    FltUtils::getInt16ValueThenDecal(&id1specialEffect, cursor);
    FltUtils::getInt16ValueThenDecal(&id2specialEffect, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
    FltUtils::getDouble64ValueThenDecal(&XcenterCoordinate, cursor);
    FltUtils::getDouble64ValueThenDecal(&YcenterCoordinate, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZcenterCoordinate, cursor);
    FltUtils::getDouble64ValueThenDecal(&transitionRange, cursor);
}

std::ostream& FltRecordLOD::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "switchInDistance: ", switchInDistance);
    FltDump::line(os, "switchOutDistance: ", switchOutDistance);
    FltDump::line(os, "id1specialEffect: ", id1specialEffect);
    FltDump::line(os, "id2specialEffect: ", id2specialEffect);
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "      Use Previous Slant Range: ", flags, 31);
    FltDump::flag(os, "      FreezeCenter (don't recalculate): ", flags, 29);
    FltDump::line(os, "XcenterCoordinate: ", XcenterCoordinate);
    FltDump::line(os, "YcenterCoordinate: ", YcenterCoordinate);
    FltDump::line(os, "ZcenterCoordinate: ", ZcenterCoordinate);
    FltDump::line(os, "transitionRange: ", transitionRange);
    return os;
}

std::ostream& FltRecordOLDLOD::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD LEVEL_OF_DETAIL (LOD) RECORD (OBSOLETE) ");
}

void FltRecordOLDLOD::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getUInt32ValueThenDecal(&switchInDistance, cursor);
    FltUtils::getUInt32ValueThenDecal(&switchOutDistance, cursor);
    FltUtils::getInt16ValueThenDecal(&id1specialEffect, cursor);
    FltUtils::getInt16ValueThenDecal(&id2specialEffect, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
    FltUtils::getInt32ValueThenDecal(&XcenterCoordinate, cursor);
    FltUtils::getInt32ValueThenDecal(&YcenterCoordinate, cursor);
    FltUtils::getInt32ValueThenDecal(&ZcenterCoordinate, cursor);
}

std::ostream& FltRecordOLDLOD::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "switchInDistance: ", switchInDistance);
    FltDump::line(os, "switchOutDistance: ", switchOutDistance);
    FltDump::line(os, "id1specialEffect: ", id1specialEffect);
    FltDump::line(os, "id2specialEffect: ", id2specialEffect);
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "      Use Previous Slant Range: ", flags, 31);
    FltDump::flag(os, "      SPT Flag: ", flags, 30);
    FltDump::flag(os, "      FreezeCenter (don't recalculate): ", flags, 29);
    FltDump::line(os, "XcenterCoordinate: ", XcenterCoordinate);
    FltDump::line(os, "YcenterCoordinate: ", YcenterCoordinate);
    FltDump::line(os, "ZcenterCoordinate: ", ZcenterCoordinate);
    return os;
}
