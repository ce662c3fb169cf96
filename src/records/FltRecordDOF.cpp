#include "records/FltRecordDOF.h"

#include "records/FltFields.h"

std::ostream& FltRecordDOF::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n DOF RECORD ");
}

void FltRecordDOF::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordDOF::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
