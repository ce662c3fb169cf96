#include "records/FltRecordClipRegion.h"

#include "records/FltRecordDefinition.h"

#include <iterator>

bool FltRecordClipRegion::isEnabledClipPlane(int plane) const
{
    return plane >= 0 && plane < static_cast<int>(std::size(flags)) && flags[plane] == 1;
}

template class FltRecordOf<FltRecordClipRegion, PrimaryFltRecord>;
