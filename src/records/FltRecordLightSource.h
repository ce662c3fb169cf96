#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>
#include <iterator>

class FltDump;

/// A light in the hierarchy, of a kind that the light source palette holds.
///
/// The flags stand in the last of their four bytes: bit 7 enabled, 6 global, 4 export.
class FltRecordLightSource : public FltRecordOf<FltRecordLightSource, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::lightSource;
    static constexpr std::string_view title = "\n LIGHT SOURCE RECORD ";

    char idASCII[8] = {};
    std::int32_t reserved1 = 0;
    std::int32_t indexIntoLightPalette = 0; ///< Slot in the light source table.
    std::int32_t reserved2 = 0;
    std::uint8_t flags[4] = {}; ///< In the order of the file.
    std::int32_t reserved3 = 0;
    double localOrSpotPositionCoordinateX = 0;
    double localOrSpotPositionCoordinateY = 0;
    double localOrSpotPositionCoordinateZ = 0;
    float infiniteOrSpotYaw = 0;
    float infiniteOrSpotPitch = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self.infiniteOrSpotPitch + 1));
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("indexIntoLightPalette", self.indexIntoLightPalette);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("flags", self.flags, dumpAs::heading);
        visit.flag("enabled", self.flags[3], 7, "     enabled: ");
        visit.flag("global", self.flags[3], 6, "     global: ");
        visit.flag("export", self.flags[3], 4, "     export: ");
        visit("reserved3", self.reserved3, dumpAs::nothing);
        visit("localOrSpotPositionCoordinateX", self.localOrSpotPositionCoordinateX);
        visit("localOrSpotPositionCoordinateY", self.localOrSpotPositionCoordinateY);
        visit("localOrSpotPositionCoordinateZ", self.localOrSpotPositionCoordinateZ);
        visit("infiniteOrSpotYaw", self.infiniteOrSpotYaw);
        visit("infiniteOrSpotPitch", self.infiniteOrSpotPitch);
    }
};

/// One entry of the light source table.
class FltRecordLightSourcePalette : public FltRecordOf<FltRecordLightSourcePalette, PaletteFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::lightSourcePalette;
    static constexpr std::string_view title = "\n LIGHT SOURCE PALETTE RECORD ";

    std::int32_t paletteIndex = 0; ///< Slot in the light source table.
    char reserved1[8] = {};
    char lightSourceName[20] = {}; ///< Without a zero if it takes all of its room.
    std::int32_t reserved2 = 0;
    float ambientRed = 0;
    float ambientGreen = 0;
    float ambientBlue = 0;
    float ambientAlpha = 0;
    float diffuseRed = 0;
    float diffuseGreen = 0;
    float diffuseBlue = 0;
    float diffuseAlpha = 0;
    float specularRed = 0;
    float specularGreen = 0;
    float specularBlue = 0;
    float specularAlpha = 0;
    std::int32_t lightType = 0;
    char reserved3[40] = {}; ///< The file has the first 10, so what follows stands at odd offsets.
    float spotExponentialDropoffTerm = 0;
    float spotCutoffAngle = 0;
    float yaw = 0;
    float pitch = 0;
    float constantAttenuationCoefficient = 0;
    float linearAttenuationCoefficient = 0;
    float quadraticAttenuationCoefficient = 0;
    std::int32_t modelingLight = 0;
    char reserved4[76] = {};

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        fieldsWith(10, self, visit);
    }

protected:
    /// @param reservedSize bytes that the file has of reserved3
    template <class Self, class Visitor>
    static void fieldsWith(int reservedSize, Self& self, Visitor& visit)
    {
        visit("paletteIndex", self.paletteIndex, " paletteIndex: ");
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("lightSourceName", self.lightSourceName,
              dumpAs::text(" lightSourceName: ", std::end(self.reserved4)));
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("ambientRed", self.ambientRed, " ambientRed: ");
        visit("ambientGreen", self.ambientGreen, " ambientGreen: ");
        visit("ambientBlue", self.ambientBlue, " ambientBlue: ");
        visit("ambientAlpha", self.ambientAlpha, " ambientAlpha : ");
        visit("diffuseRed", self.diffuseRed, " diffuseRed : ");
        visit("diffuseGreen", self.diffuseGreen, " diffuseGreen : ");
        visit("diffuseBlue", self.diffuseBlue, " diffuseBlue: ");
        visit("diffuseAlpha", self.diffuseAlpha, " diffuseAlpha: ");
        visit("specularRed", self.specularRed, " specularRed: ");
        visit("specularGreen", self.specularGreen, " specularGreen: ");
        visit("specularBlue", self.specularBlue, " specularBlue: ");
        visit("specularAlpha", self.specularAlpha, " specularAlpha: ");
        visit("lightType", self.lightType, " lightType: ");
        visit.first(reservedSize, "reserved3", self.reserved3, dumpAs::nothing);
        visit("spotExponentialDropoffTerm", self.spotExponentialDropoffTerm,
              " spotExponentialDropoffTerm : ");
        visit("spotCutoffAngle", self.spotCutoffAngle, " spotCutoffAngle: ");
        visit("yaw", self.yaw, " yaw: ");
        visit("pitch", self.pitch, " pitch: ");
        visit("constantAttenuationCoefficient", self.constantAttenuationCoefficient,
              " constantAttenuationCoefficient: ");
        visit("linearAttenuationCoefficient", self.linearAttenuationCoefficient,
              " linearAttenuationCoefficient: ");
        visit("quadraticAttenuationCoefficient", self.quadraticAttenuationCoefficient,
              " quadraticAttenuationCoefficient: ");
        visit("modelingLight", self.modelingLight, " modelingLight: ");
        visit("reserved4", self.reserved4, dumpAs::nothing);
    }
};

/// One entry of the light source table as files hold it, with all bytes of reserved3. The factory never makes
/// one.
class FltRecordWholeLightSourcePalette : public FltRecordLightSourcePalette
{
public:
    using FltRecordLightSourcePalette::FltRecordLightSourcePalette;

    void getPropertiesFromData(char* data) override;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        fieldsWith(sizeof self.reserved3, self, visit);
    }
};

/// Points of light that are drawn and light nothing.
class FltRecordLightPoint : public FltRecordOf<FltRecordLightPoint, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::lightPoint;
    static constexpr std::string_view title = "\n LIGHT POINT RECORD ";

    char idASCII[8] = {};
    std::int16_t surfaceMaterial = 0;
    std::int16_t featureID = 0;
    std::uint8_t backColor[4] = {}; ///< Red, green, blue, alpha. The dump begins with the last.
    std::int32_t displayMode = 0;
    float frontIntensity = 0;
    float backIntensity = 0;
    float minDefocus = 0;
    float maxDefocus = 0;
    std::int32_t fadeMode = 0;
    std::int32_t fogPunchMode = 0;
    std::int32_t directionalMode = 0;
    std::int32_t rangeMode = 0;
    float minPixelSize = 0;
    float maxPixelSize = 0;
    float actualPixelSize = 0;
    float transpFalloff = 0;
    float transpFalloffExponent = 0;
    float transpFalloffScalar = 0;
    float transpFalloffClamp = 0;
    float fog = 0;
    std::int32_t reserved = 0;
    float size = 0;
    std::int32_t direction = 0;
    float lobeHorizontal = 0;
    float lobeVertical = 0;
    float lobeRoll = 0;
    float falloff = 0;
    float ambientIntensity = 0;
    float animPeriod = 0;
    float animPhaseDelay = 0;
    float animEnabledPeriod = 0;
    float significance = 0;
    std::int32_t drawOrder = 0;
    std::int32_t flags = 0;
    float animRotation[3] = {};

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(std::end(self.animRotation)));
        visit("surfaceMaterial", self.surfaceMaterial);
        visit("featureID", self.featureID);
        visit("backColor", self.backColor, dumpAs::nothing);
        if constexpr (Visitor::dumps)
            self.dumpBackColor(visit.dump);
        visit("displayMode", self.displayMode);
        visit("frontIntensity", self.frontIntensity);
        visit("backIntensity", self.backIntensity);
        visit("minDefocus", self.minDefocus);
        visit("maxDefocus", self.maxDefocus);
        visit("fadeMode", self.fadeMode);
        visit("fogPunchMode", self.fogPunchMode);
        visit("directionalMode", self.directionalMode);
        visit("rangeMode", self.rangeMode);
        visit("minPixelSize", self.minPixelSize);
        visit("maxPixelSize", self.maxPixelSize);
        visit("actualPixelSize", self.actualPixelSize);
        visit("transpFalloff", self.transpFalloff);
        visit("transpFalloffExponent", self.transpFalloffExponent);
        visit("transpFalloffScalar", self.transpFalloffScalar);
        visit("transpFalloffClamp", self.transpFalloffClamp);
        visit("fog", self.fog);
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("size", self.size);
        visit("direction", self.direction);
        visit("lobeHorizontal", self.lobeHorizontal);
        visit("lobeVertical", self.lobeVertical);
        visit("lobeRoll", self.lobeRoll);
        visit("falloff", self.falloff);
        visit("ambientIntensity", self.ambientIntensity);
        visit("animPeriod", self.animPeriod);
        visit("animPhaseDelay", self.animPhaseDelay);
        visit("animEnabledPeriod", self.animEnabledPeriod);
        visit("significance", self.significance);
        visit("drawOrder", self.drawOrder);
        visit("flags", self.flags, dumpAs::pointer);
        visit("animRotation", self.animRotation, dumpAs::list(" "));
    }

private:
    void dumpBackColor(FltDump& dump) const;
};
