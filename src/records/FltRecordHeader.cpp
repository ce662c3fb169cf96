#include "records/FltRecordHeader.h"

#include "records/FltFields.h"

std::ostream& FltRecordHeader::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n HEADER RECORD ");
}

void FltRecordHeader::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordHeader::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
