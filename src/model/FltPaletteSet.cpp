#include "model/FltPaletteSet.h"

#include "model/FltPaletteTexture.h"
#include "records/FltOpcode.h"
#include "records/FltRecordLightPointPalette.h"
#include "records/FltRecordLightSource.h"
#include "records/FltRecordLineStyle.h"
#include "records/FltRecordMaterial.h"

#include <algorithm>
#include <cstring>
#include <iterator>

FltPaletteSet::FltPaletteSet(std::string const& file)
    : colors(std::make_shared<FltColors>()),
      materials(std::make_shared<std::map<std::int32_t, FltMaterialValues>>()),
      textures(std::make_shared<FltTextureNames>()),
      lights(std::make_shared<std::map<std::int32_t, FltLightValues>>()),
      lightPoints(std::make_shared<std::map<std::int32_t, FltLightPointValues>>()),
      lineWidths(std::make_shared<std::map<std::int32_t, std::int32_t>>())
{
    textures->file = file;
}

bool FltPaletteSet::take(FltRecordView const& record, int revision)
{
    switch (record.opcode) {
    case FltOpcode::colorPalette:
        if (!isOverridden(colorOverride)) {
            colors = std::make_shared<FltColors>(); // vertices before it keep their own
            colors->assign(record, revision);
        }
        return true;
    case FltOpcode::material:
        if (!isOverridden(materialOverride))
            takeMaterial(record);
        return true;
    case FltOpcode::oldMaterialPalette:
        if (!isOverridden(materialOverride))
            takeOldMaterials(record, revision);
        return true;
    case FltOpcode::texturePattern:
        if (!isOverridden(textureOverride))
            takeTexture(record);
        return true;
    case FltOpcode::lightSourcePalette:
        if (!isOverridden(lightOverride))
            takeLight(record);
        return true;
    case FltOpcode::lightPointAppearancePalette:
        if (!isOverridden(lightPointOverride))
            takeLightPoint(record);
        return true;
    case FltOpcode::lineStylePalette:
        if (!isOverridden(lineStyleOverride))
            takeLineStyle(record);
        return true;
    default:
        return false;
    }
}

void FltPaletteSet::overrideBy(FltPaletteSet const& parent, std::uint32_t flags)
{
    overrides |= flags;
    if ((flags & colorOverride) != 0)
        colors = parent.colors;
    if ((flags & materialOverride) != 0)
        materials = parent.materials;
    if ((flags & textureOverride) != 0)
        textures = parent.textures;
    if ((flags & lightOverride) != 0)
        lights = parent.lights;
    if ((flags & lightPointOverride) != 0)
        lightPoints = parent.lightPoints;
    if ((flags & lineStyleOverride) != 0)
        lineWidths = parent.lineWidths;
}

void FltPaletteSet::takeMaterial(FltRecordView const& record)
{
    FltDecoded<FltRecordMaterial> const material(record);
    FltMaterialValues& values = (*materials)[material.index];
    std::copy(std::begin(material.ambient), std::end(material.ambient), values.ambient);
    std::copy(std::begin(material.diffuse), std::end(material.diffuse), values.diffuse);
    std::copy(std::begin(material.specular), std::end(material.specular), values.specular);
    std::copy(std::begin(material.emissive), std::end(material.emissive), values.emissive);
    values.shininess = material.shininess;
    values.alpha = material.alpha;
}

void FltPaletteSet::takeOldMaterials(FltRecordView const& record, int revision)
{
    auto const palette = std::make_unique<FltDecoded<FltRecordOLDMaterialPalette>>(record, revision);
    for (int i = 0; i < FltRecordOLDMaterialPalette::entryCount; ++i) {
        FltRecordOLDMaterialPalette::Entry const& entry = palette->entries[i];
        (*materials)[i] = {{entry.ambientRed, entry.ambientGreen, entry.ambientBlue},
                           {entry.diffuseRed, entry.diffuseGreen, entry.diffuseBlue},
                           {entry.specularRed, entry.specularGreen, entry.specularBlue},
                           {entry.emissiveRed, entry.emissiveGreen, entry.emissiveBlue},
                           entry.shininess,
                           entry.alpha};
    }
}

void FltPaletteSet::takeTexture(FltRecordView const& record)
{
    FltPaletteTexture const texture(record);
    textures->names[texture.patternIndex] = {texture.fileName,
                                             ::strnlen(texture.fileName, sizeof texture.fileName)};
}

void FltPaletteSet::takeLight(FltRecordView const& record)
{
    FltDecoded<FltRecordWholeLightSourcePalette> const light(record);
    (*lights)[light.paletteIndex] = {light.lightType,
                                     {light.diffuseRed, light.diffuseGreen, light.diffuseBlue},
                                     light.spotExponentialDropoffTerm,
                                     light.spotCutoffAngle,
                                     {light.constantAttenuationCoefficient,
                                      light.linearAttenuationCoefficient,
                                      light.quadraticAttenuationCoefficient}};
}

void FltPaletteSet::takeLightPoint(FltRecordView const& record)
{
    FltDecoded<FltRecordLightPointAppearancePalette> const entry(record);
    (*lightPoints)[entry.paletteIndex] = {FltColors::fromPacked(entry.backColor), entry.actualPixelSize};
}

void FltPaletteSet::takeLineStyle(FltRecordView const& record)
{
    FltDecoded<FltRecordLineStylePalette> const style(record);
    (*lineWidths)[style.lineStyleIndex] = style.lineWidth;
}
