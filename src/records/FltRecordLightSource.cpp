#include "records/FltRecordLightSource.h"

#include "records/FltRecordDefinition.h"

namespace
{

float asFraction(std::uint8_t colorByte)
{
    return static_cast<float>(colorByte) / 255.0F;
}

} // namespace

void FltRecordWholeLightSourcePalette::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

/// The last byte first.
void FltRecordLightPoint::dumpBackColor(FltDump& dump) const
{
    float const abgr[] = {asFraction(backColor[3]), asFraction(backColor[2]), asFraction(backColor[1]),
                          asFraction(backColor[0])};
    dump.list("backColor (ABGR) : ", abgr, 4, " ");
}

template class FltRecordOf<FltRecordLightSource, PrimaryFltRecord>;
template class FltRecordOf<FltRecordLightSourcePalette, PaletteFltRecord>;
template class FltRecordOf<FltRecordLightPoint, PrimaryFltRecord>;
