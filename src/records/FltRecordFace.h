#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"
#include "records/FltVersion.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

/// A polygon: its appearance. Its vertices stand in the list of the level below.
///
/// | Offset | Type     | Field                       |                                                      |
/// |--------|----------|-----------------------------|------------------------------------------------------|
/// | 4      | char[8]  | `idField`                   | name                                                 |
/// | 12     | int32    | `IRColorCode`               | infrared                                             |
/// | 16     | int16    | `relativePriority`          |                                                      |
/// | 18     | int8     | `drawType`                  |                                                      |
/// | 19     | int8     | `textureWhite`              |                                                      |
/// | 20     | uint16   | `colorNameIndex`            |                                                      |
/// | 22     | uint16   | `alternateColorNameIndex`   |                                                      |
/// | 24     | int8     | reserved                    |                                                      |
/// | 25     | int8     | `templateBillboard`         |                                                      |
/// | 26     | int16    | `detailTexturePatternIndex` |                                                      |
/// | 28     | int16    | `texturePatternIndex`       | -1 for no texture                                    |
/// | 30     | int16    | `materialIndex`             | -1 for no material                                   |
/// | 32     | int16    | `surfaceMaterialCode`       |                                                      |
/// | 34     | int16    | `idFeature`                 |                                                      |
/// | 36     | int32    | `IRMaterialCode`            | infrared                                             |
/// | 40     | uint16   | `transparency`              | 0 is opaque, 65535 is fully transparent              |
/// | 42     | uint8    | `LODGenerationControl`      |                                                      |
/// | 43     | uint8    | `lineStyleIndex`            |                                                      |
/// | 44     | uint32   | `flags`                     | see below                                            |
/// | 48     | uint8    | `lightMode`                 |                                                      |
/// | 49     | int8     | reserved                    |                                                      |
/// | 50     | int16    | reserved                    |                                                      |
/// | 52     | int32    | reserved                    |                                                      |
/// | 56     | uint8[4] | `packedColor`               | alpha, blue, green, red                              |
/// | 60     | uint8[4] | `alternatePackedColor`      | alpha, blue, green, red                              |
///
/// Flags: bit 31 terrain, 30 no colour of its own, 29 no alternate colour, 28 the colour is `packedColor` and
/// not one of the palette, 27 terrain culture cutout, 26 hidden (not drawn).
///
/// From revision 1500 on:
///
/// | Offset | Type     | Field                       |                                                      |
/// |--------|----------|-----------------------------|------------------------------------------------------|
/// | 64     | int16    | `textureMappingIndex`       |                                                      |
/// | 66     | int16    | reserved                    |                                                      |
/// | 68     | int32    | `primaryColorIndex`         | palette index and intensity                          |
/// | 72     | int32    | `alternateColorIndex`       | palette index and intensity                          |
/// | 76     | int16[2] | reserved                    |                                                      |
///
/// Before, `textureMappingIndex` is -1 and both colour indices are `colorNameIndex`.
class FltRecordFace : public PrimaryFltRecord, public FltVersion
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::face; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idField[9] = {}; ///< Eight characters of the file, and a zero.
    std::int32_t IRColorCode = 0;
    std::int16_t relativePriority = 0;
    std::int8_t drawType = 0;
    std::int8_t textureWhite = 0;
    std::uint16_t colorNameIndex = 0;
    std::uint16_t alternateColorNameIndex = 0;
    std::int8_t reserved1 = 0;
    std::int8_t templateBillboard = 0;
    std::int16_t detailTexturePatternIndex = 0;
    std::int16_t texturePatternIndex = 0;
    std::int16_t materialIndex = 0;
    std::int16_t surfaceMaterialCode = 0;
    std::int16_t idFeature = 0;
    std::int32_t IRMaterialCode = 0;
    std::uint16_t transparency = 0;
    std::uint8_t LODGenerationControl = 0;
    std::uint8_t lineStyleIndex = 0;
    std::uint32_t flags = 0;
    std::uint8_t lightMode = 0;
    std::int8_t reserved2 = 0;
    std::int16_t reserved3 = 0;
    std::int32_t reserved4 = 0;
    std::uint8_t packedColor[4] = {};          ///< Alpha, blue, green, red.
    std::uint8_t alternatePackedColor[4] = {}; ///< Alpha, blue, green, red.
    std::int16_t textureMappingIndex = 0;
    std::int16_t reserved5 = 0;
    std::int32_t primaryColorIndex = 0;
    std::int32_t alternateColorIndex = 0;
    std::int16_t reserved6 = 0;
    std::int16_t reserved7 = 0;
};

/// The vertices of the face before, by their place in the vertex palette. The same in every revision.
///
/// | Offset | Type                    | Field           |
/// |--------|-------------------------|-----------------|
/// | 4      | int32[(length - 4) / 4] | `vertexOffsets` |
///
/// A length that leaves no room for a whole offset gives an empty list.
class FltRecordVertexList : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::vertexList; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::vector<int> vertexOffsets; ///< Byte offsets into the vertex palette, one for each vertex, in order.
};

/// The vertices of the face before, for a face that changes its shape with the distance. The same in every
/// revision.
///
/// With a count of (length - 4) / 4, entry i holds the int32 at offset 4 + 4 i and the int32 at offset
/// 4 + count + 4 i. So the second members begin count bytes behind the first ones, on any byte, and the last
/// of them end up to count bytes behind the record.
class FltRecordMorphVertexList : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::morphVertexList; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Bytes from the first one on that the decoder of a record of @p length bytes reads.
    static std::size_t getReach(unsigned int length);

    std::vector<std::pair<int, int>> vertexOffsets; ///< Byte offsets into the vertex palette.
};
