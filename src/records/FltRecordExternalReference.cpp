#include "records/FltRecordExternalReference.h"

#include "records/FltFields.h"

std::ostream& FltRecordExternalReference::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n EXTERNAL REFERENCE RECORD ");
}

void FltRecordExternalReference::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordExternalReference::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
