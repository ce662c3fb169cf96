#include "records/FltRecordClipRegion.h"

#include "records/FltFields.h"

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
    FltFields::decode(*this, data);
}

std::ostream& FltRecordClipRegion::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
