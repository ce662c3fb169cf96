#include "records/FltRecordLineStyle.h"

#include "records/FltFields.h"

std::ostream& FltRecordLineStylePalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LINE STYLE PALETTE RECORD ");
}

void FltRecordLineStylePalette::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordLineStylePalette::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
