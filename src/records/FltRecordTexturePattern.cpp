#include "records/FltRecordTexturePattern.h"

#include "records/FltFields.h"

std::ostream& FltRecordTexturePattern::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TEXTURE_PATTERN RECORD ");
}

void FltRecordTexturePattern::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordTexturePattern::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
