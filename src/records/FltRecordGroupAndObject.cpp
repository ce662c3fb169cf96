#include "records/FltRecordGroupAndObject.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordGroup::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n GROUP RECORD ");
}

void FltRecordGroup::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt16ValueThenDecal(&relativePriority, cursor);
    FltUtils::getInt16ValueThenDecal(&reserved1, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
    FltUtils::getInt16ValueThenDecal(&id1SpecialEffect, cursor);
    FltUtils::getInt16ValueThenDecal(&id2SpecialEffect, cursor);
    FltUtils::getInt16ValueThenDecal(&significance, cursor);
    FltUtils::getInt8ValueThenDecal(&layerCode, cursor);
    FltUtils::getInt8ValueThenDecal(&reserved2, cursor);
    if (revision >= 1421)
        FltUtils::getInt32ValueThenDecal(&reserved3, cursor);
}

std::ostream& FltRecordGroup::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, this + 1);
    FltDump::line(os, "relativePriority: ", relativePriority);
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "     forward animation: ", flags, 30);
    FltDump::flag(os, "     swing animation: ", flags, 29);
    FltDump::flag(os, "     bounding box follows: ", flags, 28);
    FltDump::flag(os, "     freeze bounding box: ", flags, 27);
    FltDump::flag(os, "     default parent: ", flags, 26);
    FltDump::flag(os, "     backward animation: ", flags, 25);
    FltDump::line(os, "id1SpecialEffect: ", id1SpecialEffect);
    FltDump::line(os, "id2SpecialEffect: ", id2SpecialEffect);
    FltDump::line(os, "significance: ", significance);
    FltDump::line(os, "layerCode: ", layerCode);
    return os;
}

std::ostream& FltRecordObject::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OBJECT RECORD ");
}

void FltRecordObject::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
    FltUtils::getInt16ValueThenDecal(&relativePriority, cursor);
    FltUtils::getUInt16ValueThenDecal(&transparency, cursor);
    FltUtils::getInt16ValueThenDecal(&id1SpecialEffect, cursor);
    FltUtils::getInt16ValueThenDecal(&id2SpecialEffect, cursor);
    FltUtils::getInt16ValueThenDecal(&significance, cursor);
    FltUtils::getInt16ValueThenDecal(&spare, cursor);
}

std::ostream& FltRecordObject::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, &spare + 1); // the object's end, but for its padding
    FltDump::line(os, "relativePriority: ", relativePriority);
    FltDump::line(os, "transparency: ", transparency);
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "don t display in daylight: ", flags, 31);
    FltDump::flag(os, " ---------    at dusk: ", flags, 30);
    FltDump::flag(os, " ---------    at night: ", flags, 29);
    FltDump::flag(os, "don t illuminate: ", flags, 28);
    FltDump::flag(os, "flat shaded: ", flags, 27);
    FltDump::flag(os, "group's shadow object: ", flags, 26);
    FltDump::line(os, "id1SpecialEffect: ", id1SpecialEffect);
    FltDump::line(os, "id2SpecialEffect: ", id2SpecialEffect);
    FltDump::line(os, "significance: ", significance);
    FltDump::line(os, "spare: ", spare);
    return os;
}
