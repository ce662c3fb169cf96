// The tables of colours, materials, textures, line styles and names.

#include "convert/FltConversionHost.h"
#include "convert/FltMaterialFields.h"
#include "convert/FltToInventorState.h"
#include "parser/FltParser.h"
#include "records/FltRecordLineStyle.h"
#include "records/FltRecordMaterial.h"
#include "records/FltRecordNamePalette.h"
#include "records/FltRecordTexturePattern.h"

#include <cstring>

namespace
{

/// The format's shininess goes to 128, the toolkit's to 1.
constexpr float shininessScale = 0.0078125F;

} // namespace

void FltToInventor::visitColorPalette(FltRecordColorPalette const* record)
{
    state->palettes.colorPalette.assign(*record);
}

void FltToInventor::visitMaterial(FltRecordMaterial const* record)
{
    if (record->index < 0 || record->index >= FltLimits::materialPaletteSize)
        return; // no face can name it
    SoMaterial* const palette = state->palettes.materialPalette.get();
    if (palette == nullptr)
        return;
    FltMaterialFields fields;
    fields.ambientColor = SbColor(record->ambient);
    fields.diffuseColor = SbColor(record->diffuse);
    fields.specularColor = SbColor(record->specular);
    fields.emissiveColor = SbColor(record->emissive);
    fields.shininess = record->shininess * shininessScale;
    fields.transparency = 1.0F - record->alpha;
    fields.writeTo(*palette, record->index);
}

void FltToInventor::visitOLDMaterialPalette(FltRecordOLDMaterialPalette const* record)
{
    std::int32_t index = 0;
    for (auto const& entry : record->entries) {
        FltRecordMaterial material(record->getLength());
        material.index = index++;
        std::memcpy(material.name, entry.name, sizeof material.name);
        material.flags = entry.flags;
        material.ambient[0] = entry.ambientRed;
        material.ambient[1] = entry.ambientGreen;
        material.ambient[2] = entry.ambientBlue;
        material.diffuse[0] = entry.diffuseRed;
        material.diffuse[1] = entry.diffuseGreen;
        material.diffuse[2] = entry.diffuseBlue;
        material.specular[0] = entry.specularRed;
        material.specular[1] = entry.specularGreen;
        material.specular[2] = entry.specularBlue;
        material.emissive[0] = entry.emissiveRed;
        material.emissive[1] = entry.emissiveGreen;
        material.emissive[2] = entry.emissiveBlue;
        material.shininess = entry.shininess;
        material.alpha = entry.alpha;
        visitMaterial(&material);
    }
}

void FltToInventor::visitTexturePattern(FltRecordTexturePattern const* record)
{
    std::string const fileName(record->fileName, ::strnlen(record->fileName, sizeof record->fileName));
    state->palettes.texturePalette[record->patternIndex] = state->makeTexture(fileName);
}

SoNodeRef<SoTexture2> FltToInventor::State::makeTexture(std::string const& fileName)
{
    if (!shared.makesNodes)
        return {};
    FltInput const* const input = parser.get() != nullptr ? parser.get()->getInput() : nullptr;
    return shared.host != nullptr && input != nullptr ? shared.host->makeTexture(*input, fileName)
                                                      : shared.textures.make(relativePath + fileName);
}

void FltToInventor::visitLineStylePalette(FltRecordLineStylePalette const* record)
{
    SoNodeRef<SoDrawStyle> const style(state->make<SoDrawStyle>());
    if (style.get() == nullptr)
        return;
    style->lineWidth = static_cast<float>(record->lineWidth);
    style->linePattern = static_cast<unsigned short>(record->patternMask);
    state->palettes.lineStylePalette[record->lineStyleIndex] = style;
}

void FltToInventor::visitNamePalette(FltRecordNamePalette const* record)
{
    state->palettes.namePalette = record->setOfNames;
}
