#include "records/FltRecordExternalReference.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordExternalReference::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n EXTERNAL REFERENCE RECORD ");
}

void FltRecordExternalReference::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(asciiPath, sizeof asciiPath, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved1, cursor);
    FltUtils::getUInt32ValueThenDecal(&Flags, cursor);
    cursor += 2;
    FltUtils::getInt16ValueThenDecal(&reserved2, cursor);
}

std::ostream& FltRecordExternalReference::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "asciiPath: ", asciiPath, &reserved2 + 1); // the object's end, but for its padding
    FltDump::line(os, "Flags: ");
    FltDump::flag(os, "      Color palette override: ", Flags, 31);
    FltDump::flag(os, "      Material palette override: ", Flags, 30);
    FltDump::flag(os, "      Texture and texture mapping palette override: ", Flags, 29);
    FltDump::flag(os, "      Line style palette override: ", Flags, 28);
    FltDump::flag(os, "      Sound palette override: ", Flags, 27);
    FltDump::flag(os, "      Light source palette override: ", Flags, 26);
    FltDump::flag(os, "      Light point palette override: ", Flags, 25);
    return os;
}
