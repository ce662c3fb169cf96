#include "records/FltRecordLOD.h"

#include "records/FltFields.h"

std::ostream& FltRecordLOD::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LEVEL_OF_DETAIL (LOD) RECORD ");
}

void FltRecordLOD::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordLOD::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordOLDLOD::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD LEVEL_OF_DETAIL (LOD) RECORD (OBSOLETE) ");
}

void FltRecordOLDLOD::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordOLDLOD::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
