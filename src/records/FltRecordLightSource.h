#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A light in the hierarchy, of a kind that the light source palette tells.
///
/// | Offset | Type    | Field                            |
/// |--------|---------|----------------------------------|
/// | 4      | char[8] | `idASCII`                        |
/// | 12     | int32   | reserved                         |
/// | 16     | int32   | `indexIntoLightPalette`          |
/// | 20     | int32   | reserved                         |
/// | 24     | 4 bytes | `flags`                          |
/// | 28     | int32   | reserved                         |
/// | 32     | float64 | `localOrSpotPositionCoordinateX` |
/// | 40     | float64 | `localOrSpotPositionCoordinateY` |
/// | 48     | float64 | `localOrSpotPositionCoordinateZ` |
/// | 56     | float32 | `infiniteOrSpotYaw`              |
/// | 60     | float32 | `infiniteOrSpotPitch`            |
///
/// The flags stand in the last of their four bytes: bit 7 enabled, 6 global, 4 export.
class FltRecordLightSource : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::lightSource; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
};

/// One entry of the light source table.
///
/// | Offset | Type     | Field                             |
/// |--------|----------|-----------------------------------|
/// | 4      | int32    | `paletteIndex`                    |
/// | 8      | 8 bytes  | reserved                          |
/// | 16     | char[20] | `lightSourceName`                 |
/// | 36     | int32    | reserved                          |
/// | 40     | float32  | `ambientRed`                      |
/// | 44     | float32  | `ambientGreen`                    |
/// | 48     | float32  | `ambientBlue`                     |
/// | 52     | float32  | `ambientAlpha`                    |
/// | 56     | float32  | `diffuseRed`                      |
/// | 60     | float32  | `diffuseGreen`                    |
/// | 64     | float32  | `diffuseBlue`                     |
/// | 68     | float32  | `diffuseAlpha`                    |
/// | 72     | float32  | `specularRed`                     |
/// | 76     | float32  | `specularGreen`                   |
/// | 80     | float32  | `specularBlue`                    |
/// | 84     | float32  | `specularAlpha`                   |
/// | 88     | int32    | `lightType`                       |
/// | 92     | 10 bytes | reserved                          |
/// | 102    | float32  | `spotExponentialDropoffTerm`      |
/// | 106    | float32  | `spotCutoffAngle`                 |
/// | 110    | float32  | `yaw`                             |
/// | 114    | float32  | `pitch`                           |
/// | 118    | float32  | `constantAttenuationCoefficient`  |
/// | 122    | float32  | `linearAttenuationCoefficient`    |
/// | 126    | float32  | `quadraticAttenuationCoefficient` |
/// | 130    | int32    | `modelingLight`                   |
/// | 134    | 76 bytes | reserved                          |
///
/// The reserved bytes at 92 have a member of 40 but take 10, so what follows stands at these odd offsets.
class FltRecordLightSourcePalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::lightSourcePalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
    char reserved3[40] = {}; ///< Only the first 10 are read.
    float spotExponentialDropoffTerm = 0;
    float spotCutoffAngle = 0;
    float yaw = 0;
    float pitch = 0;
    float constantAttenuationCoefficient = 0;
    float linearAttenuationCoefficient = 0;
    float quadraticAttenuationCoefficient = 0;
    std::int32_t modelingLight = 0;
    char reserved4[76] = {};
};

/// Points of light that are drawn and light nothing.
///
/// | Offset | Type       | Field                   |
/// |--------|------------|-------------------------|
/// | 4      | char[8]    | `idASCII`               |
/// | 12     | int16      | `surfaceMaterial`       |
/// | 14     | int16      | `featureID`             |
/// | 16     | 4 bytes    | `backColor`             |
/// | 20     | int32      | `displayMode`           |
/// | 24     | float32    | `frontIntensity`        |
/// | 28     | float32    | `backIntensity`         |
/// | 32     | float32    | `minDefocus`            |
/// | 36     | float32    | `maxDefocus`            |
/// | 40     | int32      | `fadeMode`              |
/// | 44     | int32      | `fogPunchMode`          |
/// | 48     | int32      | `directionalMode`       |
/// | 52     | int32      | `rangeMode`             |
/// | 56     | float32    | `minPixelSize`          |
/// | 60     | float32    | `maxPixelSize`          |
/// | 64     | float32    | `actualPixelSize`       |
/// | 68     | float32    | `transpFalloff`         |
/// | 72     | float32    | `transpFalloffExponent` |
/// | 76     | float32    | `transpFalloffScalar`   |
/// | 80     | float32    | `transpFalloffClamp`    |
/// | 84     | float32    | `fog`                   |
/// | 88     | int32      | reserved                |
/// | 92     | float32    | `size`                  |
/// | 96     | int32      | `direction`             |
/// | 100    | float32    | `lobeHorizontal`        |
/// | 104    | float32    | `lobeVertical`          |
/// | 108    | float32    | `lobeRoll`              |
/// | 112    | float32    | `falloff`               |
/// | 116    | float32    | `ambientIntensity`      |
/// | 120    | float32    | `animPeriod`            |
/// | 124    | float32    | `animPhaseDelay`        |
/// | 128    | float32    | `animEnabledPeriod`     |
/// | 132    | float32    | `significance`          |
/// | 136    | int32      | `drawOrder`             |
/// | 140    | int32      | `flags`                 |
/// | 144    | float32[3] | `animRotation`          |
class FltRecordLightPoint : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::lightPoint; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
};
