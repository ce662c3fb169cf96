#include "records/FltRecordMaterial.h"

#include "records/FltFields.h"

std::ostream& FltRecordMaterial::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n MATERIAL PALETTE RECORD ");
}

void FltRecordMaterial::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordMaterial::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordOLDMaterialPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD MATERIAL PALETTE RECORD (OBSOLETE)");
}

void FltRecordOLDMaterialPalette::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordOLDMaterialPalette::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
