#include "records/FltRecordLongID.h"

#include "records/FltFields.h"

std::ostream& FltRecordLongID::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LONG_ID RECORD ");
}

void FltRecordLongID::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordLongID::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
