#include "records/FltRecordGroupAndObject.h"

#include "records/FltFields.h"

std::ostream& FltRecordGroup::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n GROUP RECORD ");
}

void FltRecordGroup::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordGroup::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordObject::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OBJECT RECORD ");
}

void FltRecordObject::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordObject::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
