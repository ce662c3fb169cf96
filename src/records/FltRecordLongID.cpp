#include "records/FltRecordLongID.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordLongID::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LONG_ID RECORD ");
}

void FltRecordLongID::getPropertiesFromData(char* data)
{
    idASCII = FltUtils::restAsText(data, length);
}

std::ostream& FltRecordLongID::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII.get());
    return os;
}
