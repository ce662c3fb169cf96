#include "records/FltRecordUnknown.h"

#include <algorithm>

std::ostream& FltRecordUnknown::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n UNKNOWN RECORD ");
}

std::ostream& FltRecordUnknown::properties(std::ostream& os) const
{
    return nameOpcodeAndLength(os);
}

void FltRecordUnknown::getPropertiesFromData(char* data)
{
    unsigned int const kept = std::max(length, 4U) - 4;
    rawData.reset(new char[kept]);
    std::copy_n(data, kept, rawData.get());
}
