#include "records/FltRecordVertex.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

namespace
{

void showNormal(std::ostream& os, float const* normal)
{
    FltDump::line(os, "vertexNormal: i=", normal[0]);
    FltDump::line(os, "              j=", normal[1]);
    FltDump::line(os, "              k=", normal[2]);
}

void showTexture(std::ostream& os, float const* texture)
{
    FltDump::line(os, "texture: u=", texture[0]);
    FltDump::line(os, "         v=", texture[1]);
}

} // namespace

std::ostream& FltRecordVertexPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX PALETTE RECORD ");
}

void FltRecordVertexPalette::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getUInt32ValueThenDecal(&vertexPaletteTotalLength, cursor);
}

std::ostream& FltRecordVertexPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "vertexPaletteTotalLength: ", vertexPaletteTotalLength);
    return os;
}

void FltRecordVertexColor::readHead(char*& cursor)
{
    FltUtils::getUInt16ValueThenDecal(&colorNameIndex, cursor);
    FltUtils::getUInt16ValueThenDecal(&flags, cursor);
    FltUtils::getDouble64ValueThenDecal(&Xcoordinate, cursor);
    FltUtils::getDouble64ValueThenDecal(&Ycoordinate, cursor);
    FltUtils::getDouble64ValueThenDecal(&Zcoordinate, cursor);
}

void FltRecordVertexColor::readColor(char*& cursor)
{
    FltUtils::getBytesThenDecal(packedColor, sizeof packedColor, cursor);
    if (revision >= 1540)
        FltUtils::getInt32ValueThenDecal(&vertexColorIndex, cursor);
    else
        vertexColorIndex = -1;
}

void FltRecordVertexColor::readReserved(std::int32_t* reserved, char*& cursor) const
{
    if (revision >= 1580)
        FltUtils::getInt32ValueThenDecal(reserved, cursor);
}

std::ostream& FltRecordVertexColor::properties1(std::ostream& os) const
{
    FltDump::line(os, "colorNameIndex: ", colorNameIndex);
    FltDump::flag(os, "flags: Start Hard Edge: ", flags, 15);
    FltDump::flag(os, "         Normal frozen: ", flags, 14);
    FltDump::flag(os, "              No Color: ", flags, 13);
    FltDump::flag(os, "          Packed Color: ", flags, 12);
    FltDump::line(os, "Xcoordinate: ", Xcoordinate);
    FltDump::line(os, "Ycoordinate: ", Ycoordinate);
    FltDump::line(os, "Zcoordinate: ", Zcoordinate);
    return os;
}

std::ostream& FltRecordVertexColor::properties2(std::ostream& os) const
{
    FltDump::colorByte(os, "packedColor: alpha=", packedColor[0]);
    FltDump::colorByte(os, "              blue=", packedColor[1]);
    FltDump::colorByte(os, "             green=", packedColor[2]);
    FltDump::colorByte(os, "               red=", packedColor[3]);
    FltDump::line(os, "vertexColorIndex: ", vertexColorIndex);
    return os;
}

std::ostream& FltRecordVertexColor::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR RECORD ");
}

void FltRecordVertexColor::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readHead(cursor);
    readColor(cursor);
}

std::ostream& FltRecordVertexColor::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    properties1(os);
    return properties2(os);
}

std::ostream& FltRecordVertexColorNormal::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR NORMAL RECORD ");
}

void FltRecordVertexColorNormal::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readHead(cursor);
    FltUtils::getFloat32ValuesThenDecal(vertexNormal, 3, cursor);
    readColor(cursor);
    readReserved(&reserved, cursor);
}

std::ostream& FltRecordVertexColorNormal::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    properties1(os);
    showNormal(os, vertexNormal);
    return properties2(os);
}

std::ostream& FltRecordVertexColorNormalUv::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR NORMAL UV RECORD ");
}

void FltRecordVertexColorNormalUv::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readHead(cursor);
    FltUtils::getFloat32ValuesThenDecal(vertexNormal, 3, cursor);
    FltUtils::getFloat32ValuesThenDecal(texture, 2, cursor);
    readColor(cursor);
    readReserved(&reserved, cursor);
}

std::ostream& FltRecordVertexColorNormalUv::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    properties1(os);
    showNormal(os, vertexNormal);
    showTexture(os, texture);
    return properties2(os);
}

std::ostream& FltRecordVertexColorUv::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VERTEX COLOR UV (TEXTURE) RECORD ");
}

void FltRecordVertexColorUv::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readHead(cursor);
    FltUtils::getFloat32ValuesThenDecal(texture, 2, cursor);
    readColor(cursor);
}

std::ostream& FltRecordVertexColorUv::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    properties1(os);
    showTexture(os, texture);
    return properties2(os);
}

void AbstractOldVertexRecord::readCoordinates(char*& cursor)
{
    FltUtils::getInt32ValueThenDecal(&Xcoordinate, cursor);
    FltUtils::getInt32ValueThenDecal(&Ycoordinate, cursor);
    FltUtils::getInt32ValueThenDecal(&Zcoordinate, cursor);
}

void AbstractOldVertexRecord::showCoordinates(std::ostream& os) const
{
    FltDump::line(os, "Xcoordinate: ", Xcoordinate);
    FltDump::line(os, "Ycoordinate: ", Ycoordinate);
    FltDump::line(os, "Zcoordinate: ", Zcoordinate);
}

std::ostream& FltRecordOldVertex::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD VERTEX RECORD (OBSOLETE)");
}

void FltRecordOldVertex::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readCoordinates(cursor);
    if (hasTexture())
        FltUtils::getFloat32ValuesThenDecal(texture, 2, cursor);
}

std::ostream& FltRecordOldVertex::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    showCoordinates(os);
    if (hasTexture())
        showTexture(os, texture);
    return os;
}

void AbstractOldVertexColorRecord::readColor(char*& cursor)
{
    FltUtils::getBytesThenDecal(&hardEdgeFlag, 1, cursor);
    FltUtils::getBytesThenDecal(&shadingFlag, 1, cursor);
    FltUtils::getUInt16ValueThenDecal(&colorIndex, cursor);
}

void AbstractOldVertexColorRecord::showColor(std::ostream& os) const
{
    FltDump::character(os, "hardEdgeFlag: ", hardEdgeFlag);
    FltDump::character(os, "shadingFlag: ", shadingFlag);
    FltDump::line(os, "colorIndex : ", colorIndex);
}

std::ostream& FltRecordOldVertexColor::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD VERTEX COLOR RECORD (OBSOLETE)");
}

void FltRecordOldVertexColor::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readCoordinates(cursor);
    readColor(cursor);
    if (hasTexture())
        FltUtils::getFloat32ValuesThenDecal(texture, 2, cursor);
}

std::ostream& FltRecordOldVertexColor::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    showCoordinates(os);
    showColor(os);
    if (hasTexture())
        showTexture(os, texture);
    return os;
}

std::ostream& FltRecordOldVertexColorNormal::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD VERTEX COLOR NORMAL RECORD (OBSOLETE)");
}

void FltRecordOldVertexColorNormal::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    readCoordinates(cursor);
    readColor(cursor);
    FltUtils::getFloat32ValuesThenDecal(vertexNormalScaled, 3, cursor);
    if (hasTexture())
        FltUtils::getFloat32ValuesThenDecal(texture, 2, cursor);
}

std::ostream& FltRecordOldVertexColorNormal::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    showCoordinates(os);
    showColor(os);
    FltDump::line(os, "vertexNormalScaled: i=", vertexNormalScaled[0]);
    FltDump::line(os, "                    j=", vertexNormalScaled[1]);
    FltDump::line(os, "                    k=", vertexNormalScaled[2]);
    if (hasTexture())
        showTexture(os, texture);
    return os;
}
