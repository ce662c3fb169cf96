#include "records/FltRecordLightSource.h"

#include "records/FltFields.h"

namespace
{

float asFraction(std::uint8_t colorByte)
{
    return static_cast<float>(colorByte) / 255.0F;
}

} // namespace

std::ostream& FltRecordLightSource::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LIGHT SOURCE RECORD ");
}

void FltRecordLightSource::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordLightSource::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordLightSourcePalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LIGHT SOURCE PALETTE RECORD ");
}

void FltRecordLightSourcePalette::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordLightSourcePalette::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordLightPoint::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LIGHT POINT RECORD ");
}

void FltRecordLightPoint::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordLightPoint::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

/// The last byte first.
void FltRecordLightPoint::dumpBackColor(FltDump& dump) const
{
    float const abgr[] = {asFraction(backColor[3]), asFraction(backColor[2]), asFraction(backColor[1]),
                          asFraction(backColor[0])};
    dump.list("backColor (ABGR) : ", abgr, 4, " ");
}
