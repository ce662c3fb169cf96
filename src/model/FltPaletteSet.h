#pragma once

#include "model/FltColors.h"
#include "model/FltRecordView.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

/// One material of the palette.
struct FltMaterialValues {
    float ambient[3] = {};
    float diffuse[3] = {};
    float specular[3] = {};
    float emissive[3] = {};
    float shininess = 0; ///< From 0 to 128.
    float alpha = 1;
};

/// One light source of the palette.
struct FltLightValues {
    enum Type : std::int32_t { infinite = 0, local = 1, spot = 2 };

    std::int32_t type = infinite;
    float diffuse[3] = {1, 1, 1};
    float dropoff = 0;
    float cutoffAngle = 180;          ///< In degrees, of half the cone.
    float attenuation[3] = {1, 0, 0}; ///< Constant, linear and quadratic.
};

/// How the light points of an entry of the appearance palette look.
struct FltLightPointValues {
    std::uint32_t backColor = FltColors::white;
    float pixelSize = 0;
};

/// The file names of a texture palette, and the file that they count from.
struct FltTextureNames {
    std::string file;
    std::map<std::int32_t, std::string> names;
};

/// The palettes of a file. A file may take over palettes of the one that refers to it, so each is shared.
struct FltPaletteSet {
    explicit FltPaletteSet(std::string const& file);

    /// Takes a record into its palette. @return whether it belongs to one of them
    bool take(FltRecordView const& record, int revision);

    /// Takes over the palettes that the flags of an external reference name. Records that belong to them are
    /// passed over from then on.
    void overrideBy(FltPaletteSet const& parent, std::uint32_t flags);

    std::shared_ptr<FltColors> colors;
    std::shared_ptr<std::map<std::int32_t, FltMaterialValues>> materials;
    std::shared_ptr<FltTextureNames> textures;
    std::shared_ptr<std::map<std::int32_t, FltLightValues>> lights;
    std::shared_ptr<std::map<std::int32_t, FltLightPointValues>> lightPoints;
    std::shared_ptr<std::map<std::int32_t, std::int32_t>> lineWidths; ///< In pixels, by line style.

    static constexpr std::uint32_t colorOverride = 1U << 31;
    static constexpr std::uint32_t materialOverride = 1U << 30;
    static constexpr std::uint32_t textureOverride = 1U << 29;
    static constexpr std::uint32_t lineStyleOverride = 1U << 28;
    static constexpr std::uint32_t lightOverride = 1U << 26;
    static constexpr std::uint32_t lightPointOverride = 1U << 25;
    static constexpr std::uint32_t knownOverrides = colorOverride | materialOverride | textureOverride |
                                                    lineStyleOverride | lightOverride | lightPointOverride;

private:
    bool isOverridden(std::uint32_t flag) const { return (overrides & flag) != 0; }
    void takeMaterial(FltRecordView const& record);
    void takeOldMaterials(FltRecordView const& record, int revision);
    void takeTexture(FltRecordView const& record);
    void takeLight(FltRecordView const& record);
    void takeLightPoint(FltRecordView const& record);
    void takeLineStyle(FltRecordView const& record);

    std::uint32_t overrides = 0;
};
