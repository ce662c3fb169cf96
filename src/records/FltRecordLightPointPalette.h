#pragma once

#include "records/FltDumpStyles.h"

#include <cstdint>

/// How light points look, up to what is shown of it: one entry of the light point appearance palette. The
/// factory makes no object of it.
struct FltRecordLightPointAppearancePalette {
    std::int32_t reserved = 0;
    char name[256] = {};
    std::int32_t paletteIndex = 0;
    std::int16_t surfaceMaterial = 0;
    std::int16_t featureID = 0;
    std::uint8_t backColor[4] = {}; ///< Alpha, blue, green, red.
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

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("name", self.name, dumpAs::nothing);
        visit("paletteIndex", self.paletteIndex);
        visit("surfaceMaterial", self.surfaceMaterial);
        visit("featureID", self.featureID);
        visit("backColor", self.backColor, dumpAs::nothing);
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
    }
};

/// Light points that look as an entry of the palette says. The factory makes no object of it.
struct FltRecordIndexedLightPoint {
    char idASCII[8] = {};
    std::int32_t appearanceIndex = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::nothing);
        visit("appearanceIndex", self.appearanceIndex);
    }
};
