#include "records/FltRecordExtensionAttribute.h"

#include "records/FltFields.h"

#include <algorithm>

std::ostream& FltRecordExtensionAttribute::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n EXTENSION ATTRIBUTE RECORD ");
}

void FltRecordExtensionAttribute::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordExtensionAttribute::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
