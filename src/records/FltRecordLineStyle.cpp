#include "records/FltRecordLineStyle.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordLineStylePalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LINE STYLE PALETTE RECORD ");
}

void FltRecordLineStylePalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt16ValueThenDecal(&lineStyleIndex, cursor);
    FltUtils::getInt16ValueThenDecal(&patternMask, cursor);
    FltUtils::getInt32ValueThenDecal(&lineWidth, cursor);
}

std::ostream& FltRecordLineStylePalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "lineStyleIndex : ", lineStyleIndex);
    FltDump::line(os, "patternMask : ", patternMask);
    FltDump::line(os, "lineWidth : ", lineWidth);
    return os;
}
