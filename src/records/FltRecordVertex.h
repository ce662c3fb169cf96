#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"
#include "records/FltVersion.h"

#include <cstdint>

/// The head of the vertex palette: the vertex records of the whole file follow it.
///
/// | Offset | Type   | Field                      |
/// |--------|--------|----------------------------|
/// | 4      | uint32 | `vertexPaletteTotalLength` |
class FltRecordVertexPalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::vertexPalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::uint32_t vertexPaletteTotalLength = 0;
};

/// A vertex of the palette with a colour, and the base of the shapes that have more.
///
/// All shapes begin alike:
///
/// | Offset | Type    | Field            |                |
/// |--------|---------|------------------|----------------|
/// | 4      | uint16  | `colorNameIndex` |                |
/// | 6      | uint16  | `flags`          | see below      |
/// | 8      | float64 | `Xcoordinate`    | database units |
/// | 16     | float64 | `Ycoordinate`    | database units |
/// | 24     | float64 | `Zcoordinate`    | database units |
///
/// Flags: bit 15 the vertex starts a hard edge, 14 its normal is frozen, 13 no colour of its own, 12 the
/// colour is `packedColor`.
///
/// They go on by shape at these offsets:
///
/// | Field                   | Type       | Color | ColorNormal | ColorUv | ColorNormalUv |
/// |-------------------------|------------|-------|-------------|---------|---------------|
/// | `vertexNormal`          | float32[3] |       | 32          |         | 32            |
/// | `texture`               | float32[2] |       |             | 32      | 44            |
/// | `packedColor`           | uint8[4]   | 32    | 44          | 40      | 52            |
/// | `vertexColorIndex`      | int32      | 36    | 48          | 44      | 56            |
/// | reserved                | int32      |       | 52          |         | 60            |
///
/// `vertexColorIndex` is read from revision 1540 on and -1 before, the reserved word from revision 1580 on.
/// Where the flags say no colour, that wins over packed colour; a vertex that has neither flag takes its
/// colour from `vertexColorIndex`.
class FltRecordVertexColor : public PaletteFltRecord, public FltVersion
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::vertexColor; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Writes what all shapes begin with. @return @p os
    std::ostream& properties1(std::ostream& os) const;

    /// Writes the colour, with which all shapes end. @return @p os
    std::ostream& properties2(std::ostream& os) const;

    std::uint16_t colorNameIndex = 0;
    std::uint16_t flags = 0;
    double Xcoordinate = 0;
    double Ycoordinate = 0;
    double Zcoordinate = 0;
    std::uint8_t packedColor[4] = {}; ///< Alpha, blue, green, red.
    std::int32_t vertexColorIndex = 0;

protected:
    void readHead(char*& cursor);
    void readColor(char*& cursor);
    void readReserved(std::int32_t* reserved, char*& cursor) const;
};

/// A vertex with a colour and a normal; see FltRecordVertexColor.
class FltRecordVertexColorNormal : public FltRecordVertexColor
{
public:
    using FltRecordVertexColor::FltRecordVertexColor;

    int getOpcode() const override { return FltOpcode::vertexColorNormal; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    float vertexNormal[3] = {}; ///< i, j, k.
    std::int32_t reserved = 0;
};

/// A vertex with a colour, a normal and texture coordinates; see FltRecordVertexColor.
class FltRecordVertexColorNormalUv : public FltRecordVertexColor
{
public:
    using FltRecordVertexColor::FltRecordVertexColor;

    int getOpcode() const override { return FltOpcode::vertexColorNormalUv; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    float vertexNormal[3] = {}; ///< i, j, k.
    float texture[2] = {};      ///< u, v.
    std::int32_t reserved = 0;
};

/// A vertex with a colour and texture coordinates; see FltRecordVertexColor.
class FltRecordVertexColorUv : public FltRecordVertexColor
{
public:
    using FltRecordVertexColor::FltRecordVertexColor;

    int getOpcode() const override { return FltOpcode::vertexColorUv; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    float texture[2] = {}; ///< u, v.
};

/// A vertex of the old forms, which stand below their face and in no palette: its place, in whole database
/// units.
class AbstractOldVertexRecord : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    std::int32_t Xcoordinate = 0;
    std::int32_t Ycoordinate = 0;
    std::int32_t Zcoordinate = 0;

protected:
    void readCoordinates(char*& cursor);
    void showCoordinates(std::ostream& os) const;
};

/// An old vertex without a colour of its own.
///
/// | Offset | Type       | Field         |                                               |
/// |--------|------------|---------------|-----------------------------------------------|
/// | 4      | int32      | `Xcoordinate` |                                               |
/// | 8      | int32      | `Ycoordinate` |                                               |
/// | 12     | int32      | `Zcoordinate` |                                               |
/// | 16     | float32[2] | `texture`     | in a record of exactly 24 bytes               |
class FltRecordOldVertex : public AbstractOldVertexRecord
{
public:
    using AbstractOldVertexRecord::AbstractOldVertexRecord;

    int getOpcode() const override { return FltOpcode::oldVertex; }
    unsigned int getLength() const override { return length; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Whether the record holds `texture`: its length is exactly 24.
    bool hasTexture() const { return length == 24; }

    float texture[2] = {}; ///< u, v; zero in a record without them.
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
    void readColor(char*& cursor);
    void showColor(std::ostream& os) const;
};

/// An old vertex with a colour.
///
/// | Offset | Type       | Field          |                                              |
/// |--------|------------|----------------|----------------------------------------------|
/// | 4      | int32      | `Xcoordinate`  |                                              |
/// | 8      | int32      | `Ycoordinate`  |                                              |
/// | 12     | int32      | `Zcoordinate`  |                                              |
/// | 16     | char       | `hardEdgeFlag` |                                              |
/// | 17     | char       | `shadingFlag`  |                                              |
/// | 18     | uint16     | `colorIndex`   |                                              |
/// | 20     | float32[2] | `texture`      | in a record of exactly 28 bytes              |
class FltRecordOldVertexColor : public AbstractOldVertexColorRecord
{
public:
    using AbstractOldVertexColorRecord::AbstractOldVertexColorRecord;

    int getOpcode() const override { return FltOpcode::oldVertexColor; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Whether the record holds `texture`: its length is exactly 28.
    bool hasTexture() const { return length == 28; }

    float texture[2] = {}; ///< u, v; without meaning in a record without them.
};

/// An old vertex with a colour and a normal.
///
/// | Offset | Type       | Field                |                                        |
/// |--------|------------|----------------------|----------------------------------------|
/// | 4      | int32      | `Xcoordinate`        |                                        |
/// | 8      | int32      | `Ycoordinate`        |                                        |
/// | 12     | int32      | `Zcoordinate`        |                                        |
/// | 16     | char       | `hardEdgeFlag`       |                                        |
/// | 17     | char       | `shadingFlag`        |                                        |
/// | 18     | uint16     | `colorIndex`         |                                        |
/// | 20     | float32[3] | `vertexNormalScaled` | taken as it stands, nothing is scaled  |
/// | 32     | float32[2] | `texture`            | in a record of exactly 40 bytes        |
class FltRecordOldVertexColorNormal : public AbstractOldVertexColorRecord
{
public:
    using AbstractOldVertexColorRecord::AbstractOldVertexColorRecord;

    int getOpcode() const override { return FltOpcode::oldVertexColorNormal; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Whether the record holds `texture`: its length is exactly 40.
    bool hasTexture() const { return length == 40; }

    float vertexNormalScaled[3] = {}; ///< i, j, k.
    float texture[2] = {};            ///< u, v; without meaning in a record without them.
};
