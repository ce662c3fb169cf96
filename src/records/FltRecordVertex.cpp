#include "records/FltRecordVertex.h"

#include "records/FltFields.h"

std::ostream& FltRecordVertexPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX PALETTE RECORD ");
}

void FltRecordVertexPalette::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordVertexPalette::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordVertexColor::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR RECORD ");
}

void FltRecordVertexColor::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordVertexColor::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordVertexColor::properties1(std::ostream& os) const
{
    FltFieldDump dump(os);
    firstFields(*this, dump);
    return os;
}

std::ostream& FltRecordVertexColor::properties2(std::ostream& os) const
{
    FltFieldDump dump(os);
    colorFields(*this, dump);
    return os;
}

std::ostream& FltRecordVertexColorNormal::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR NORMAL RECORD ");
}

void FltRecordVertexColorNormal::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordVertexColorNormal::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordVertexColorNormalUv::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR NORMAL UV RECORD ");
}

void FltRecordVertexColorNormalUv::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordVertexColorNormalUv::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordVertexColorUv::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR UV (TEXTURE) RECORD ");
}

void FltRecordVertexColorUv::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordVertexColorUv::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordOldVertex::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD VERTEX RECORD (OBSOLETE)");
}

void FltRecordOldVertex::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordOldVertex::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordOldVertexColor::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD VERTEX COLOR RECORD (OBSOLETE)");
}

void FltRecordOldVertexColor::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordOldVertexColor::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordOldVertexColorNormal::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD VERTEX COLOR NORMAL RECORD (OBSOLETE)");
}

void FltRecordOldVertexColorNormal::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordOldVertexColorNormal::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
