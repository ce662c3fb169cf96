#include "convert/FltObjectToSoSeparator.h"

#include "convert/FltFaceResources.h"
#include "convert/FltMaterialFields.h"
#include "convert/FltPalettes.h"
#include "dump/FltDumpOutput.h"
#include "records/FltRecordFace.h"

namespace
{

constexpr std::uint32_t noColorFlag = 0x40000000;
constexpr std::uint32_t packedColorFlag = 0x10000000;

SbColor product(SbColor const& a, SbColor const& b)
{
    return {a[0] * b[0], a[1] * b[1], a[2] * b[2]};
}

SbColor scaled(SbColor const& color, float factor)
{
    return {color[0] * factor, color[1] * factor, color[2] * factor};
}

float fractionOf(std::uint8_t byte)
{
    return static_cast<float>(byte) / 255.0F;
}

/// The bytes of a packed colour stand in the order alpha, blue, green, red.
SbColor packedColorOf(FltRecordFace const& face)
{
    return {fractionOf(face.packedColor[3]), fractionOf(face.packedColor[2]),
            fractionOf(face.packedColor[1])};
}

/// The word that packed colours become with materials: each of its bytes is 1 for a full channel and 0 for
/// any other, red lowest.
std::uint32_t fullChannelsOf(FltRecordFace const& face)
{
    std::uint32_t word = 0;
    for (std::uint8_t const byte : face.packedColor)
        word = word << 8 | static_cast<std::uint32_t>(fractionOf(byte));
    return word;
}

FltMaterialFields plainMaterial(SbColor const& color)
{
    FltMaterialFields fields;
    fields.ambientColor = color;
    fields.diffuseColor = color;
    fields.shininess = 0;
    return fields;
}

void multiply(FltMaterialFields& fields, SbColor const& color)
{
    fields.ambientColor = product(fields.ambientColor, color);
    fields.diffuseColor = product(fields.diffuseColor, color);
}

} // namespace

std::optional<FltMaterialFields> FltObjectToSoSeparator::materialOf(FltRecordFace const& face) const
{
    bool const noColor = (face.flags & noColorFlag) != 0;
    bool const packedColor = (face.flags & packedColorFlag) != 0;
    if (face.materialIndex != -1)
        return noColor       ? noColorMaterial(face)
               : packedColor ? packedColorMaterial(face)
                             : colorPaletteIndexMaterial(face);
    if (noColor)
        return FltMaterialFields();
    if (packedColor)
        return plainMaterial(packedColorOf(face));
    return colorPaletteIndexNoMaterial(face);
}

std::optional<FltMaterialFields>
FltObjectToSoSeparator::colorPaletteIndexNoMaterial(FltRecordFace const& face) const
{
    int const position = FltColorPalette::positionOf(face.primaryColorIndex);
    if (static_cast<std::uint32_t>(position) > FltColorPalette::lastPosition) {
        FltDumpOutput::line("bad color index");
        return std::nullopt;
    }
    FltMaterialFields fields = plainMaterial(scaled(resources->palettes.colorPalette.getColor(position),
                                                    FltColorPalette::intensityOf(face.primaryColorIndex)));
    fields.transparency =
        (static_cast<float>(face.transparency) / 65535.0F) * (1.0F - currentFltObjectTransparency);
    return fields;
}

FltMaterialFields FltObjectToSoSeparator::noColorMaterial(FltRecordFace const& face) const
{
    FltMaterialFields fields = paletteMaterial(face);
    fields.transparency = paletteTransparency(face, fields.transparency);
    return fields;
}

FltMaterialFields FltObjectToSoSeparator::packedColorMaterial(FltRecordFace const& face) const
{
    FltMaterialFields fields = paletteMaterial(face);
    multiply(fields, packedColorOf(face));
    fields.transparency = 0;
    return fields;
}

FltMaterialFields FltObjectToSoSeparator::colorPaletteIndexMaterial(FltRecordFace const& face) const
{
    FltMaterialFields fields = paletteMaterial(face);
    multiply(fields, materialModulation(face));
    fields.transparency = paletteTransparency(face, fields.transparency);
    return fields;
}

void FltObjectToSoSeparator::addFltFaceMaterialToSoMaterial(FltRecordFace const* face, SoMaterial*& material,
                                                            int const& index)
{
    if (std::optional<FltMaterialFields> const fields = materialOf(*face))
        fields->writeTo(*material, index);
}

void FltObjectToSoSeparator::addFltFaceNoColorNoMaterialToSoMaterial(SoMaterial*& material, int const& index)
{
    FltMaterialFields().writeTo(*material, index);
}

void FltObjectToSoSeparator::addFltFaceWithPackedColorNoMaterialToSoMaterial(FltRecordFace const* face,
                                                                             SoMaterial*& material,
                                                                             int const& index)
{
    plainMaterial(packedColorOf(*face)).writeTo(*material, index);
}

void FltObjectToSoSeparator::addFltFaceWithColorPaletteIndexNoMaterialToSoMaterial(FltRecordFace const* face,
                                                                                   SoMaterial*& material,
                                                                                   int const& index)
{
    if (std::optional<FltMaterialFields> const fields = colorPaletteIndexNoMaterial(*face))
        fields->writeTo(*material, index);
}

void FltObjectToSoSeparator::addFltFaceNoColorMaterialToSoMaterial(FltRecordFace const* face,
                                                                   SoMaterial*& material, int const& index)
{
    noColorMaterial(*face).writeTo(*material, index);
}

void FltObjectToSoSeparator::addFltFaceWithPackedColorMaterialToSoMaterial(FltRecordFace const* face,
                                                                           SoMaterial*& material,
                                                                           int const& index)
{
    packedColorMaterial(*face).writeTo(*material, index);
}

void FltObjectToSoSeparator::addFltFaceWithColorPaletteIndexMaterialToSoMaterial(FltRecordFace const* face,
                                                                                 SoMaterial*& material,
                                                                                 int const& index)
{
    colorPaletteIndexMaterial(*face).writeTo(*material, index);
}

/// The colour that a palette material is multiplied with. Palette colours come at full strength here,
/// whatever the intensity in their index.
SbColor FltObjectToSoSeparator::materialModulation(FltRecordFace const& face) const
{
    FltColorPalette const& palette = resources->palettes.colorPalette;
    SbColor const white(1, 1, 1);
    int const colorIndex = face.primaryColorIndex;
    if (face.textureWhite != 0 && face.texturePatternIndex != -1)
        return white;
    if (revision <= 13) {
        if (rgbMode)
            return palette.getColor(FltColorPalette::positionOf(colorIndex));
        if (colorIndex < 0)
            return white;
        if (colorIndex <= 4095)
            return scaled(white, FltColorPalette::intensityOf(colorIndex));
        return palette.getColor(4096 + (colorIndex & 0xfff));
    }
    if ((face.flags & noColorFlag) != 0)
        return white;
    if (rgbMode || (face.flags & packedColorFlag) != 0)
        return FltColorPalette::unpack(fullChannelsOf(face));
    return palette.getColor(FltColorPalette::positionOf(revision > 1539 ? colorIndex : face.colorNameIndex));
}

/// A position that the palette doesn't have gives the values of a default material.
FltMaterialFields FltObjectToSoSeparator::paletteMaterial(FltRecordFace const& face) const
{
    SoMaterial const* const palette = resources->palettes.materialPalette.get();
    return palette != nullptr ? FltMaterialFields::readFrom(*palette, face.materialIndex)
                              : FltMaterialFields();
}

/// Face and Object together bring a material's transparency towards nothing.
float FltObjectToSoSeparator::paletteTransparency(FltRecordFace const& face, float transparency) const
{
    float const both = static_cast<float>(face.transparency) * currentFltObjectTransparency;
    return (both / -65535.0F + 1.0F) * transparency;
}
