#include "records/FltRecordText.h"

#include "records/FltFields.h"

std::ostream& FltRecordText::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TEXT RECORD ");
}

void FltRecordText::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordText::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
