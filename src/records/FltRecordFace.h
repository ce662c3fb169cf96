#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"
#include "records/FltVersion.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

class FltDump;

/// A polygon: its appearance. Its vertices stand in the list of the level below.
///
/// Before revision 1500 `textureMappingIndex` is -1 and both colour indices are `colorNameIndex`.
class FltRecordFace : public FltRecordOf<FltRecordFace, PrimaryFltRecord>, public FltVersion
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::face;
    static constexpr std::string_view title = "\n FACE RECORD ";

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

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        idFields(self, visit);
        surfaceFields(self, visit);
    }

protected:
    template <class Self, class Visitor>
    static void idFields(Self& self, Visitor& visit)
    {
        visit.first(8, "idField", self.idField, dumpAs::text(std::end(self.idField)));
    }
    template <class Self, class Visitor>
    static void surfaceFields(Self& self, Visitor& visit)
    {
        visit("IRColorCode", self.IRColorCode);
        visit("relativePriority", self.relativePriority);
        visit("drawType", self.drawType);
        visit("textureWhite", self.textureWhite);
        visit("colorNameIndex", self.colorNameIndex);
        visit("alternateColorNameIndex", self.alternateColorNameIndex);
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("templateBillboard", self.templateBillboard);
        visit("detailTexturePatternIndex", self.detailTexturePatternIndex);
        visit("texturePatternIndex", self.texturePatternIndex);
        visit("materialIndex", self.materialIndex);
        visit("surfaceMaterialCode", self.surfaceMaterialCode);
        visit("idFeature", self.idFeature);
        visit("IRMaterialCode", self.IRMaterialCode);
        visit("transparency", self.transparency);
        visit("LODGenerationControl", self.LODGenerationControl);
        visit("lineStyleIndex", self.lineStyleIndex);
        visit("flags", self.flags, dumpAs::nothing);
        visit.flag("terrain", self.flags, 31, "flags:           Terrain: ");
        visit.flag("noColor", self.flags, 30, "                No Color: ");
        visit.flag("noAlternateColor", self.flags, 29, "      No Alternate Color: ");
        visit.flag("packedColor", self.flags, 28, "            Packed Color: ");
        visit.flag("terrainCultureCutout", self.flags, 27, "  Terrain Culture Cutout: ");
        visit.flag("hidden", self.flags, 26, "      Hidden (not drawn): ");
        visit("lightMode", self.lightMode);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("reserved3", self.reserved3, dumpAs::nothing);
        visit("reserved4", self.reserved4, dumpAs::nothing);
        visit("packedColor", self.packedColor, dumpAs::nothing);
        visit.showColor("packedColor: alpha=", self.packedColor[0]);
        visit.showColor("              blue=", self.packedColor[1]);
        visit.showColor("             green=", self.packedColor[2]);
        visit.showColor("               red=", self.packedColor[3]);
        visit("alternatePackedColor", self.alternatePackedColor, dumpAs::nothing);
        visit.showColor("alternatePackedColor: alpha=", self.alternatePackedColor[0]);
        visit.showColor("                       blue=", self.alternatePackedColor[1]);
        visit.showColor("                      green=", self.alternatePackedColor[2]);
        visit.showColor("                        red=", self.alternatePackedColor[3]);
        if (visit.from(self.revision, 1500)) {
            visit("textureMappingIndex", self.textureMappingIndex);
            visit("reserved5", self.reserved5, dumpAs::nothing);
            visit("primaryColorIndex", self.primaryColorIndex);
            visit("alternateColorIndex", self.alternateColorIndex);
            visit("reserved6", self.reserved6, dumpAs::nothing);
            visit("reserved7", self.reserved7, dumpAs::nothing);
        } else {
            visit.preset(self.textureMappingIndex, -1);
            visit.preset(self.primaryColorIndex, self.colorNameIndex);
            visit.preset(self.alternateColorIndex,
                         self.colorNameIndex); // not alternateColorNameIndex
            visit.show("primaryColorIndex: ", self.primaryColorIndex);
        }
    }
};

/// The vertices of the face before, by their place in the vertex palette. The same in every revision.
///
/// A length that leaves no room for a whole offset gives an empty list.
class FltRecordVertexList : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    static constexpr int opcode = FltOpcode::vertexList;
    static constexpr std::string_view title = "\n VERTEX LIST RECORD ";

    int getOpcode() const override { return opcode; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::vector<int> vertexOffsets; ///< Byte offsets into the vertex palette, one for each vertex, in order.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.values("vertexOffsets", self.vertexOffsets.data(), static_cast<int>(self.vertexOffsets.size()));
        if constexpr (Visitor::dumps)
            self.dumpOffsets(visit.dump);
    }

private:
    void dumpOffsets(FltDump& dump) const;
};

/// The vertices of the face before, for a face that changes its shape with the distance. The same in every
/// revision.
///
/// With a count of (length - 4) / 4, entry i holds the int32 at offset 4 + 4 i and the int32 at offset
/// 4 + count + 4 i. So the second members begin count bytes after the first ones, on any byte, and the last
/// of them end up to count bytes after the record.
class FltRecordMorphVertexList : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    static constexpr int opcode = FltOpcode::morphVertexList;
    static constexpr std::string_view title = "\n MORPH VERTEX LIST RECORD ";

    int getOpcode() const override { return opcode; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Bytes from the first one on that the decoder of a record of @p length bytes reads.
    static std::size_t getReach(unsigned int length);

    std::vector<std::pair<int, int>> vertexOffsets; ///< Byte offsets into the vertex palette.

    template <class Self, class Visitor>
    static void fields([[maybe_unused]] Self& self, [[maybe_unused]] Visitor& visit)
    {
        if constexpr (Visitor::lists)
            for (auto const& [first, second] : self.vertexOffsets) {
                visit.openElement("vertexOffsets");
                visit.number("first", first);
                visit.number("second", second);
                visit.close();
            }
        if constexpr (Visitor::dumps)
            self.dumpOffsets(visit.dump);
    }

private:
    void dumpOffsets(FltDump& dump) const;
};
