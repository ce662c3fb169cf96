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
    rawData.reset(new char[getRawSize()]);
    std::copy_n(data, getRawSize(), rawData.get());
}
