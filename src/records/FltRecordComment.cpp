#include "records/FltRecordComment.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordComment::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n COMMENT RECORD ");
}

void FltRecordComment::getPropertiesFromData(char* data)
{
    textDescription = FltUtils::restAsText(data, length);
}

std::ostream& FltRecordComment::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "textDescription: ", textDescription.get());
    return os;
}
