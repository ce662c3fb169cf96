#include "model/FltPaletteSet.h"

#include "records/FltOpcode.h"
#include "records/FltRecordMaterial.h"
#include "records/FltRecordTexturePattern.h"

#include <algorithm>
#include <iterator>

FltPaletteSet::FltPaletteSet(std::string const& file)
    : colors(std::make_shared<FltColors>()),
      materials(std::make_shared<std::map<std::int32_t, FltMaterialValues>>()),
      textures(std::make_shared<FltTextureNames>()),
      lights(std::make_shared<std::map<std::int32_t, FltLightValues>>()),
      lightPoints(std::make_shared<std::map<std::int32_t, FltLightPointValues>>())
{
    textures->file = file;
}

bool FltPaletteSet::take(FltRecordView const& record, int revision)
{
    switch (record.opcode) {
    case FltOpcode::colorPalette:
        if (!isOverridden(colorOverride))
            colors->assign(record, revision);
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
}

void FltPaletteSet::takeMaterial(FltRecordView const& record)
{
    FltRecordMaterial material(record.classLength());
    record.decodeTo(material);
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
    auto const palette = std::make_unique<FltRecordOLDMaterialPalette>(record.classLength());
    palette->revision = revision;
    record.decodeTo(*palette);
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
    bool const isShort = record.size <= FltRecordTexturePattern::shortFormLength;
    std::size_t const room = isShort ? 80 : 200;
    textures->names[record.int32At(4 + room)] = record.textAt(4, room);
}

/// The record's class reads ten bytes of the forty that are reserved after the type, so it isn't asked here.
void FltPaletteSet::takeLight(FltRecordView const& record)
{
    FltLightValues& light = (*lights)[record.int32At(4)];
    for (std::size_t i = 0; i < 3; ++i) {
        light.diffuse[i] = record.floatAt(56 + 4 * i);
        light.attenuation[i] = record.floatAt(148 + 4 * i);
    }
    light.type = record.int32At(88);
    light.dropoff = record.floatAt(132);
    light.cutoffAngle = record.floatAt(136);
}

void FltPaletteSet::takeLightPoint(FltRecordView const& record)
{
    FltLightPointValues& values = (*lightPoints)[record.int32At(264)];
    values.backColor = FltColors::fromPacked(record.word32At(272));
    values.pixelSize = record.floatAt(320);
}
