#include "records/FltRecordReplicate.h"

#include "records/FltFields.h"

std::ostream& FltRecordReplicate::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n REPLICATE RECORD ");
}

void FltRecordReplicate::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordReplicate::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
