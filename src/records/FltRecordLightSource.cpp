#include "records/FltRecordLightSource.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

#include <iterator>

namespace
{

/// Bytes of the third reserved block of a light source palette entry, whose member has room for more.
constexpr int reserved3Size = 10;

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
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved1, cursor);
    FltUtils::getInt32ValueThenDecal(&indexIntoLightPalette, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved2, cursor);
    FltUtils::getBytesThenDecal(flags, sizeof flags, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved3, cursor);
    FltUtils::getDouble64ValueThenDecal(&localOrSpotPositionCoordinateX, cursor);
    FltUtils::getDouble64ValueThenDecal(&localOrSpotPositionCoordinateY, cursor);
    FltUtils::getDouble64ValueThenDecal(&localOrSpotPositionCoordinateZ, cursor);
    FltUtils::getFloat32ValueThenDecal(&infiniteOrSpotYaw, cursor);
    FltUtils::getFloat32ValueThenDecal(&infiniteOrSpotPitch, cursor);
}

std::ostream& FltRecordLightSource::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, &infiniteOrSpotPitch + 1);
    FltDump::line(os, "indexIntoLightPalette: ", indexIntoLightPalette);
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "     enabled: ", flags[3], 7);
    FltDump::flag(os, "     global: ", flags[3], 6);
    FltDump::flag(os, "     export: ", flags[3], 4);
    FltDump::line(os, "localOrSpotPositionCoordinateX: ", localOrSpotPositionCoordinateX);
    FltDump::line(os, "localOrSpotPositionCoordinateY: ", localOrSpotPositionCoordinateY);
    FltDump::line(os, "localOrSpotPositionCoordinateZ: ", localOrSpotPositionCoordinateZ);
    FltDump::line(os, "infiniteOrSpotYaw: ", infiniteOrSpotYaw);
    FltDump::line(os, "infiniteOrSpotPitch: ", infiniteOrSpotPitch);
    return os;
}

std::ostream& FltRecordLightSourcePalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LIGHT SOURCE PALETTE RECORD ");
}

void FltRecordLightSourcePalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&paletteIndex, cursor);
    FltUtils::getBytesThenDecal(reserved1, sizeof reserved1, cursor);
    FltUtils::getBytesThenDecal(lightSourceName, sizeof lightSourceName, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved2, cursor);
    FltUtils::getFloat32ValueThenDecal(&ambientRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&ambientGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&ambientBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&ambientAlpha, cursor);
    FltUtils::getFloat32ValueThenDecal(&diffuseRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&diffuseGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&diffuseBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&diffuseAlpha, cursor);
    FltUtils::getFloat32ValueThenDecal(&specularRed, cursor);
    FltUtils::getFloat32ValueThenDecal(&specularGreen, cursor);
    FltUtils::getFloat32ValueThenDecal(&specularBlue, cursor);
    FltUtils::getFloat32ValueThenDecal(&specularAlpha, cursor);
    FltUtils::getInt32ValueThenDecal(&lightType, cursor);
    FltUtils::getBytesThenDecal(reserved3, reserved3Size, cursor);
    FltUtils::getFloat32ValueThenDecal(&spotExponentialDropoffTerm, cursor);
    FltUtils::getFloat32ValueThenDecal(&spotCutoffAngle, cursor);
    FltUtils::getFloat32ValueThenDecal(&yaw, cursor);
    FltUtils::getFloat32ValueThenDecal(&pitch, cursor);
    FltUtils::getFloat32ValueThenDecal(&constantAttenuationCoefficient, cursor);
    FltUtils::getFloat32ValueThenDecal(&linearAttenuationCoefficient, cursor);
    FltUtils::getFloat32ValueThenDecal(&quadraticAttenuationCoefficient, cursor);
    FltUtils::getInt32ValueThenDecal(&modelingLight, cursor);
    FltUtils::getBytesThenDecal(reserved4, sizeof reserved4, cursor);
}

std::ostream& FltRecordLightSourcePalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, " paletteIndex: ", paletteIndex);
    FltDump::text(os, " lightSourceName: ", lightSourceName, std::end(reserved4));
    FltDump::line(os, " ambientRed: ", ambientRed);
    FltDump::line(os, " ambientGreen: ", ambientGreen);
    FltDump::line(os, " ambientBlue: ", ambientBlue);
    FltDump::line(os, " ambientAlpha : ", ambientAlpha);
    FltDump::line(os, " diffuseRed : ", diffuseRed);
    FltDump::line(os, " diffuseGreen : ", diffuseGreen);
    FltDump::line(os, " diffuseBlue: ", diffuseBlue);
    FltDump::line(os, " diffuseAlpha: ", diffuseAlpha);
    FltDump::line(os, " specularRed: ", specularRed);
    FltDump::line(os, " specularGreen: ", specularGreen);
    FltDump::line(os, " specularBlue: ", specularBlue);
    FltDump::line(os, " specularAlpha: ", specularAlpha);
    FltDump::line(os, " lightType: ", lightType);
    FltDump::line(os, " spotExponentialDropoffTerm : ", spotExponentialDropoffTerm);
    FltDump::line(os, " spotCutoffAngle: ", spotCutoffAngle);
    FltDump::line(os, " yaw: ", yaw);
    FltDump::line(os, " pitch: ", pitch);
    FltDump::line(os, " constantAttenuationCoefficient: ", constantAttenuationCoefficient);
    FltDump::line(os, " linearAttenuationCoefficient: ", linearAttenuationCoefficient);
    FltDump::line(os, " quadraticAttenuationCoefficient: ", quadraticAttenuationCoefficient);
    FltDump::line(os, " modelingLight: ", modelingLight);
    return os;
}

std::ostream& FltRecordLightPoint::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n LIGHT POINT RECORD ");
}

void FltRecordLightPoint::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt16ValueThenDecal(&surfaceMaterial, cursor);
    FltUtils::getInt16ValueThenDecal(&featureID, cursor);
    FltUtils::getBytesThenDecal(backColor, sizeof backColor, cursor);
    FltUtils::getInt32ValueThenDecal(&displayMode, cursor);
    FltUtils::getFloat32ValueThenDecal(&frontIntensity, cursor);
    FltUtils::getFloat32ValueThenDecal(&backIntensity, cursor);
    FltUtils::getFloat32ValueThenDecal(&minDefocus, cursor);
    FltUtils::getFloat32ValueThenDecal(&maxDefocus, cursor);
    FltUtils::getInt32ValueThenDecal(&fadeMode, cursor);
    FltUtils::getInt32ValueThenDecal(&fogPunchMode, cursor);
    FltUtils::getInt32ValueThenDecal(&directionalMode, cursor);
    FltUtils::getInt32ValueThenDecal(&rangeMode, cursor);
    FltUtils::getFloat32ValueThenDecal(&minPixelSize, cursor);
    FltUtils::getFloat32ValueThenDecal(&maxPixelSize, cursor);
    FltUtils::getFloat32ValueThenDecal(&actualPixelSize, cursor);
    FltUtils::getFloat32ValueThenDecal(&transpFalloff, cursor);
    FltUtils::getFloat32ValueThenDecal(&transpFalloffExponent, cursor);
    FltUtils::getFloat32ValueThenDecal(&transpFalloffScalar, cursor);
    FltUtils::getFloat32ValueThenDecal(&transpFalloffClamp, cursor);
    FltUtils::getFloat32ValueThenDecal(&fog, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getFloat32ValueThenDecal(&size, cursor);
    FltUtils::getInt32ValueThenDecal(&direction, cursor);
    FltUtils::getFloat32ValueThenDecal(&lobeHorizontal, cursor);
    FltUtils::getFloat32ValueThenDecal(&lobeVertical, cursor);
    FltUtils::getFloat32ValueThenDecal(&lobeRoll, cursor);
    FltUtils::getFloat32ValueThenDecal(&falloff, cursor);
    FltUtils::getFloat32ValueThenDecal(&ambientIntensity, cursor);
    FltUtils::getFloat32ValueThenDecal(&animPeriod, cursor);
    FltUtils::getFloat32ValueThenDecal(&animPhaseDelay, cursor);
    FltUtils::getFloat32ValueThenDecal(&animEnabledPeriod, cursor);
    FltUtils::getFloat32ValueThenDecal(&significance, cursor);
    FltUtils::getInt32ValueThenDecal(&drawOrder, cursor);
    FltUtils::getInt32ValueThenDecal(&flags, cursor);
    FltUtils::getFloat32ValuesThenDecal(animRotation, 3, cursor);
}

std::ostream& FltRecordLightPoint::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    float const abgr[] = {asFraction(backColor[3]), asFraction(backColor[2]), asFraction(backColor[1]),
                          asFraction(backColor[0])};
    FltDump::text(os, "idASCII: ", idASCII, std::end(animRotation));
    FltDump::line(os, "surfaceMaterial: ", surfaceMaterial);
    FltDump::line(os, "featureID: ", featureID);
    FltDump::list(os, "backColor (ABGR) : ", abgr, 4, " ");
    FltDump::line(os, "displayMode: ", displayMode);
    FltDump::line(os, "frontIntensity: ", frontIntensity);
    FltDump::line(os, "backIntensity: ", backIntensity);
    FltDump::line(os, "minDefocus: ", minDefocus);
    FltDump::line(os, "maxDefocus: ", maxDefocus);
    FltDump::line(os, "fadeMode: ", fadeMode);
    FltDump::line(os, "fogPunchMode: ", fogPunchMode);
    FltDump::line(os, "directionalMode: ", directionalMode);
    FltDump::line(os, "rangeMode: ", rangeMode);
    FltDump::line(os, "minPixelSize: ", minPixelSize);
    FltDump::line(os, "maxPixelSize: ", maxPixelSize);
    FltDump::line(os, "actualPixelSize: ", actualPixelSize);
    FltDump::line(os, "transpFalloff: ", transpFalloff);
    FltDump::line(os, "transpFalloffExponent: ", transpFalloffExponent);
    FltDump::line(os, "transpFalloffScalar: ", transpFalloffScalar);
    FltDump::line(os, "transpFalloffClamp: ", transpFalloffClamp);
    FltDump::line(os, "fog: ", fog);
    FltDump::line(os, "size: ", size);
    FltDump::line(os, "direction: ", direction);
    FltDump::line(os, "lobeHorizontal: ", lobeHorizontal);
    FltDump::line(os, "lobeVertical: ", lobeVertical);
    FltDump::line(os, "lobeRoll: ", lobeRoll);
    FltDump::line(os, "falloff: ", falloff);
    FltDump::line(os, "ambientIntensity: ", ambientIntensity);
    FltDump::line(os, "animPeriod: ", animPeriod);
    FltDump::line(os, "animPhaseDelay: ", animPhaseDelay);
    FltDump::line(os, "animEnabledPeriod: ", animEnabledPeriod);
    FltDump::line(os, "significance: ", significance);
    FltDump::line(os, "drawOrder: ", drawOrder);
    FltDump::pointer(os, "flags: ", flags);
    FltDump::list(os, "animRotation: ", animRotation, 3, " ");
    return os;
}
