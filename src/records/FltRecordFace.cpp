#include "records/FltRecordFace.h"

#include "dump/FltDump.h"
#include "dump/FltDumpLine.h"
#include "records/FltUtils.h"

#include <algorithm>

namespace
{

/// Whole 32-bit entries in a list record.
std::size_t entryCount(unsigned int length)
{
    return (std::max(length, 4U) - 4) >> 2;
}

} // namespace

std::ostream& FltRecordFace::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n FACE RECORD ");
}

void FltRecordFace::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idField, 8, cursor);
    FltUtils::getInt32ValueThenDecal(&IRColorCode, cursor);
    FltUtils::getInt16ValueThenDecal(&relativePriority, cursor);
    FltUtils::getInt8ValueThenDecal(&drawType, cursor);
    FltUtils::getInt8ValueThenDecal(&textureWhite, cursor);
    FltUtils::getUInt16ValueThenDecal(&colorNameIndex, cursor);
    FltUtils::getUInt16ValueThenDecal(&alternateColorNameIndex, cursor);
    FltUtils::getInt8ValueThenDecal(&reserved1, cursor);
    FltUtils::getInt8ValueThenDecal(&templateBillboard, cursor);
    FltUtils::getInt16ValueThenDecal(&detailTexturePatternIndex, cursor);
    FltUtils::getInt16ValueThenDecal(&texturePatternIndex, cursor);
    FltUtils::getInt16ValueThenDecal(&materialIndex, cursor);
    FltUtils::getInt16ValueThenDecal(&surfaceMaterialCode, cursor);
    FltUtils::getInt16ValueThenDecal(&idFeature, cursor);
    FltUtils::getInt32ValueThenDecal(&IRMaterialCode, cursor);
    FltUtils::getUInt16ValueThenDecal(&transparency, cursor);
    FltUtils::getUInt8ValueThenDecal(&LODGenerationControl, cursor);
    FltUtils::getUInt8ValueThenDecal(&lineStyleIndex, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
    FltUtils::getUInt8ValueThenDecal(&lightMode, cursor);
    FltUtils::getInt8ValueThenDecal(&reserved2, cursor);
    FltUtils::getInt16ValueThenDecal(&reserved3, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved4, cursor);
    FltUtils::getBytesThenDecal(packedColor, sizeof packedColor, cursor);
    FltUtils::getBytesThenDecal(alternatePackedColor, sizeof alternatePackedColor, cursor);
    if (revision >= 1500) {
        FltUtils::getInt16ValueThenDecal(&textureMappingIndex, cursor);
        FltUtils::getInt16ValueThenDecal(&reserved5, cursor);
        FltUtils::getInt32ValueThenDecal(&primaryColorIndex, cursor);
        FltUtils::getInt32ValueThenDecal(&alternateColorIndex, cursor);
        FltUtils::getInt16ValueThenDecal(&reserved6, cursor);
        FltUtils::getInt16ValueThenDecal(&reserved7, cursor);
    } else {
        textureMappingIndex = -1;
        reserved5 = 0;
        primaryColorIndex = colorNameIndex;
        alternateColorIndex = colorNameIndex; // on purpose not alternateColorNameIndex
        reserved6 = 0;
        reserved7 = 0;
    }
}

std::ostream& FltRecordFace::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idField: ", idField);
    FltDump::line(os, "IRColorCode: ", IRColorCode);
    FltDump::line(os, "relativePriority: ", relativePriority);
    FltDump::line(os, "drawType: ", drawType);
    FltDump::line(os, "textureWhite: ", textureWhite);
    FltDump::line(os, "colorNameIndex: ", colorNameIndex);
    FltDump::line(os, "alternateColorNameIndex: ", alternateColorNameIndex);
    FltDump::line(os, "templateBillboard: ", templateBillboard);
    FltDump::line(os, "detailTexturePatternIndex: ", detailTexturePatternIndex);
    FltDump::line(os, "texturePatternIndex: ", texturePatternIndex);
    FltDump::line(os, "materialIndex: ", materialIndex);
    FltDump::line(os, "surfaceMaterialCode: ", surfaceMaterialCode);
    FltDump::line(os, "idFeature: ", idFeature);
    FltDump::line(os, "IRMaterialCode: ", IRMaterialCode);
    FltDump::line(os, "transparency: ", transparency);
    FltDump::line(os, "LODGenerationControl: ", LODGenerationControl);
    FltDump::line(os, "lineStyleIndex: ", lineStyleIndex);
    FltDump::flag(os, "flags:           Terrain: ", flags, 31);
    FltDump::flag(os, "                No Color: ", flags, 30);
    FltDump::flag(os, "      No Alternate Color: ", flags, 29);
    FltDump::flag(os, "            Packed Color: ", flags, 28);
    FltDump::flag(os, "  Terrain Culture Cutout: ", flags, 27);
    FltDump::flag(os, "      Hidden (not drawn): ", flags, 26);
    FltDump::line(os, "lightMode: ", lightMode);
    FltDump::colorByte(os, "packedColor: alpha=", packedColor[0]);
    FltDump::colorByte(os, "              blue=", packedColor[1]);
    FltDump::colorByte(os, "             green=", packedColor[2]);
    FltDump::colorByte(os, "               red=", packedColor[3]);
    FltDump::colorByte(os, "alternatePackedColor: alpha=", alternatePackedColor[0]);
    FltDump::colorByte(os, "                       blue=", alternatePackedColor[1]);
    FltDump::colorByte(os, "                      green=", alternatePackedColor[2]);
    FltDump::colorByte(os, "                        red=", alternatePackedColor[3]);
    if (revision >= 1500)
        FltDump::line(os, "textureMappingIndex: ", textureMappingIndex);
    FltDump::line(os, "primaryColorIndex: ", primaryColorIndex);
    if (revision >= 1500)
        FltDump::line(os, "alternateColorIndex: ", alternateColorIndex);
    return os;
}

std::ostream& FltRecordVertexList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX LIST RECORD ");
}

void FltRecordVertexList::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    std::size_t const before = vertexOffsets.size();
    std::size_t const count = entryCount(getLength());
    vertexOffsets.resize(before + count);
    FltUtils::getInt32ValuesThenDecal(vertexOffsets.data() + before, static_cast<int>(count), cursor);
}

std::ostream& FltRecordVertexList::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDumpLine line(os);
    line << "Offset: ";
    for (int offset : vertexOffsets)
        line << offset << "  ";
    line.end();
    return os;
}

std::size_t FltRecordMorphVertexList::getReach(unsigned int length)
{
    std::size_t const count = entryCount(length);
    return 4 + count + 4 * count;
}

std::ostream& FltRecordMorphVertexList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n MORPH VERTEX LIST RECORD ");
}

void FltRecordMorphVertexList::getPropertiesFromData(char* data)
{
    std::size_t const count = entryCount(getLength());
    char* first = data + 4;
    char* second = first + count; // count bytes, not entries
    vertexOffsets.reserve(vertexOffsets.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        std::pair<int, int> entry;
        FltUtils::getInt32ValueThenDecal(&entry.first, first);
        FltUtils::getInt32ValueThenDecal(&entry.second, second);
        vertexOffsets.push_back(entry);
    }
}

std::ostream& FltRecordMorphVertexList::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDumpLine line(os);
    line << "Offset: ";
    for (auto const& [first, second] : vertexOffsets)
        line << "(" << first << "," << second << ")  ";
    line.end();
    return os;
}
