#include "records/FltRecordComment.h"

#include "records/FltFields.h"

std::ostream& FltRecordComment::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n COMMENT RECORD ");
}

void FltRecordComment::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordComment::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
