#include "records/FltRecordReplicate.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordReplicate::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n REPLICATE RECORD ");
}

void FltRecordReplicate::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&numberOfReplications, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
}

std::ostream& FltRecordReplicate::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "numberOfReplications: ", numberOfReplications);
    return os;
}
