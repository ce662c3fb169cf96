#include "records/FltRecordExtensionAttribute.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

#include <algorithm>

std::ostream& FltRecordExtensionAttribute::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n EXTENSION ATTRIBUTE RECORD ");
}

void FltRecordExtensionAttribute::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getBytesThenDecal(idSite, sizeof idSite, cursor);
    FltUtils::getUInt8ValueThenDecal(&reserved, cursor);
    FltUtils::getUInt8ValueThenDecal(&revision, cursor);
    FltUtils::getUInt16ValueThenDecal(&recordCode, cursor);
    unsigned int const size = std::max(length, 24U) - 24;
    extensionData.reset(new char[size]);
    FltUtils::getBytesThenDecal(extensionData.get(), static_cast<int>(size), cursor);
}

std::ostream& FltRecordExtensionAttribute::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    // An address is not for the dump: text without an end stops in front of the buffer's.
    FltDump::text(os, "idASCII: ", idASCII, &extensionData);
    FltDump::text(os, "idSite: ", idSite, &extensionData);
    FltDump::line(os, "revision: ", revision);
    FltDump::line(os, "recordCode: ", recordCode);
    return os;
}
