#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"
#include "records/FltVersion.h"

#include <cstdint>

/// The head of the vertex palette: the vertex records of the whole file follow it.
class FltRecordVertexPalette : public FltRecordOf<FltRecordVertexPalette, PaletteFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::vertexPalette;
    static constexpr std::string_view title = "\n VERTEX PALETTE RECORD ";

    std::uint32_t vertexPaletteTotalLength = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("vertexPaletteTotalLength", self.vertexPaletteTotalLength);
    }
};

/// What the texture coordinates of every vertex have in common.
class FltTextureFields
{
protected:
    template <class Texture, class Visitor>
    static void textureFields(Texture& texture, Visitor& visit)
    {
        visit("texture", texture, dumpAs::nothing);
        visit.show("texture: u=", texture[0]);
        visit.show("         v=", texture[1]);
    }
};

/// A vertex of the palette with a colour, and the base of the shapes that have more. Coordinates are in
/// database units.
///
/// All shapes begin and end alike: what is in between differs. The colour's index is read from revision 1540
/// on and -1 before. Where the flags say no colour, that wins over packed colour; a vertex that has neither
/// flag takes its colour from `vertexColorIndex`.
class FltRecordVertexColor : public FltRecordOf<FltRecordVertexColor, PaletteFltRecord>,
                             public FltVersion,
                             protected FltTextureFields
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::vertexColor;
    static constexpr std::string_view title = "\n VERTEX COLOR RECORD ";

    // Parts of properties(), which override nothing. NOLINTBEGIN(bugprone-virtual-near-miss)
    /// Writes what all shapes begin with. @return @p os
    std::ostream& properties1(std::ostream& os) const;

    /// Writes the colour, with which all shapes end. @return @p os
    std::ostream& properties2(std::ostream& os) const;
    // NOLINTEND(bugprone-virtual-near-miss)

    std::uint16_t colorNameIndex = 0;
    std::uint16_t flags = 0;
    double Xcoordinate = 0;
    double Ycoordinate = 0;
    double Zcoordinate = 0;
    std::uint8_t packedColor[4] = {}; ///< Alpha, blue, green, red.
    std::int32_t vertexColorIndex = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        firstFields(self, visit);
        colorFields(self, visit);
    }

protected:
    template <class Self, class Visitor>
    static void firstFields(Self& self, Visitor& visit)
    {
        visit("colorNameIndex", self.colorNameIndex);
        visit("flags", self.flags, dumpAs::nothing);
        visit.flag("startHardEdge", self.flags, 15, "flags: Start Hard Edge: ");
        visit.flag("normalFrozen", self.flags, 14, "         Normal frozen: ");
        visit.flag("noColor", self.flags, 13, "              No Color: ");
        visit.flag("packedColor", self.flags, 12, "          Packed Color: ");
        visit("Xcoordinate", self.Xcoordinate);
        visit("Ycoordinate", self.Ycoordinate);
        visit("Zcoordinate", self.Zcoordinate);
    }
    template <class Visitor, class Normal>
    static void normalFields(Normal& normal, Visitor& visit)
    {
        visit("vertexNormal", normal, dumpAs::nothing);
        visit.show("vertexNormal: i=", normal[0]);
        visit.show("              j=", normal[1]);
        visit.show("              k=", normal[2]);
    }
    template <class Self, class Visitor>
    static void colorFields(Self& self, Visitor& visit)
    {
        visit("packedColor", self.packedColor, dumpAs::nothing);
        visit.showColor("packedColor: alpha=", self.packedColor[0]);
        visit.showColor("              blue=", self.packedColor[1]);
        visit.showColor("             green=", self.packedColor[2]);
        visit.showColor("               red=", self.packedColor[3]);
        if (visit.from(self.revision, 1540)) {
            visit("vertexColorIndex", self.vertexColorIndex);
        } else {
            visit.preset(self.vertexColorIndex, -1);
            visit.show("vertexColorIndex: ", self.vertexColorIndex);
        }
    }
    template <class Self, class Visitor>
    static void reservedField(Self& self, Visitor& visit)
    {
        if (visit.from(self.revision, 1580))
            visit("reserved", self.reserved, dumpAs::nothing);
    }
};

/// A vertex with a colour and a normal; see FltRecordVertexColor.
class FltRecordVertexColorNormal : public FltRecordOf<FltRecordVertexColorNormal, FltRecordVertexColor>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::vertexColorNormal;
    static constexpr std::string_view title = "\n VERTEX COLOR NORMAL RECORD ";

    float vertexNormal[3] = {}; ///< i, j, k.
    std::int32_t reserved = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        firstFields(self, visit);
        normalFields(self.vertexNormal, visit);
        colorFields(self, visit);
        reservedField(self, visit);
    }
};

/// A vertex with a colour, a normal and texture coordinates; see FltRecordVertexColor.
class FltRecordVertexColorNormalUv : public FltRecordOf<FltRecordVertexColorNormalUv, FltRecordVertexColor>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::vertexColorNormalUv;
    static constexpr std::string_view title = "\n VERTEX COLOR NORMAL UV RECORD ";

    float vertexNormal[3] = {}; ///< i, j, k.
    float texture[2] = {};      ///< u, v.
    std::int32_t reserved = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        firstFields(self, visit);
        normalFields(self.vertexNormal, visit);
        textureFields(self.texture, visit);
        colorFields(self, visit);
        reservedField(self, visit);
    }
};

/// A vertex with a colour and texture coordinates; see FltRecordVertexColor.
class FltRecordVertexColorUv : public FltRecordOf<FltRecordVertexColorUv, FltRecordVertexColor>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::vertexColorUv;
    static constexpr std::string_view title = "\n VERTEX COLOR UV (TEXTURE) RECORD ";

    float texture[2] = {}; ///< u, v.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        firstFields(self, visit);
        textureFields(self.texture, visit);
        colorFields(self, visit);
    }
};

/// A vertex of the old forms, which stand below their face and in no palette: its place, in whole database
/// units.
class AbstractOldVertexRecord : public PrimaryFltRecord, protected FltTextureFields
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    std::int32_t Xcoordinate = 0;
    std::int32_t Ycoordinate = 0;
    std::int32_t Zcoordinate = 0;

protected:
    template <class Self, class Visitor>
    static void coordinateFields(Self& self, Visitor& visit)
    {
        visit("Xcoordinate", self.Xcoordinate);
        visit("Ycoordinate", self.Ycoordinate);
        visit("Zcoordinate", self.Zcoordinate);
    }
};

/// An old vertex without a colour of its own.
class FltRecordOldVertex : public FltRecordOf<FltRecordOldVertex, AbstractOldVertexRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::oldVertex;
    static constexpr std::string_view title = "\n OLD VERTEX RECORD (OBSOLETE)";
    unsigned int getLength() const override { return length; }

    static constexpr unsigned int texturedLength = 24;

    /// Whether the record holds `texture`: its length is exactly 24.
    bool hasTexture() const { return length == texturedLength; }

    float texture[2] = {}; ///< u, v; zero in a record without them.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        coordinateFields(self, visit);
        if (self.hasTexture())
            textureFields(self.texture, visit);
    }
};

/// An old vertex with the members that a colour gives it.
class AbstractOldVertexColorRecord : public AbstractOldVertexRecord
{
public:
    using AbstractOldVertexRecord::AbstractOldVertexRecord;

    char hardEdgeFlag = 0; ///< A character.
    char shadingFlag = 0;  ///< A character.
    std::uint16_t colorIndex = 0;

protected:
    template <class Self, class Visitor>
    static void colorFields(Self& self, Visitor& visit)
    {
        visit("hardEdgeFlag", self.hardEdgeFlag, dumpAs::character);
        visit("shadingFlag", self.shadingFlag, dumpAs::character);
        visit("colorIndex", self.colorIndex, "colorIndex : ");
    }
};

/// An old vertex with a colour.
class FltRecordOldVertexColor : public FltRecordOf<FltRecordOldVertexColor, AbstractOldVertexColorRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::oldVertexColor;
    static constexpr std::string_view title = "\n OLD VERTEX COLOR RECORD (OBSOLETE)";

    static constexpr unsigned int texturedLength = 28;

    /// Whether the record holds `texture`: its length is exactly 28.
    bool hasTexture() const { return length == texturedLength; }

    float texture[2] = {}; ///< u, v; without meaning in a record without them.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        coordinateFields(self, visit);
        colorFields(self, visit);
        if (self.hasTexture())
            textureFields(self.texture, visit);
    }
};

/// An old vertex with a colour and a normal.
class FltRecordOldVertexColorNormal
    : public FltRecordOf<FltRecordOldVertexColorNormal, AbstractOldVertexColorRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::oldVertexColorNormal;
    static constexpr std::string_view title = "\n OLD VERTEX COLOR NORMAL RECORD (OBSOLETE)";

    static constexpr unsigned int texturedLength = 40;

    /// Whether the record holds `texture`: its length is exactly 40.
    bool hasTexture() const { return length == texturedLength; }

    float vertexNormalScaled[3] = {}; ///< i, j, k.
    float texture[2] = {};            ///< u, v; without meaning in a record without them.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        coordinateFields(self, visit);
        colorFields(self, visit);
        visit("vertexNormalScaled", self.vertexNormalScaled, dumpAs::nothing);
        visit.show("vertexNormalScaled: i=", self.vertexNormalScaled[0]);
        visit.show("                    j=", self.vertexNormalScaled[1]);
        visit.show("                    k=", self.vertexNormalScaled[2]);
        if (self.hasTexture())
            textureFields(self.texture, visit);
    }
};
