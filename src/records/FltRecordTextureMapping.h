#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <cstdint>
#include <iterator>
#include <memory>

class FltDump;

/// The block of a put mapping (type 1).
struct FltPutTextureMappingStruct {
    std::int32_t toolState = 0;
    std::int32_t activeGeometryPoint = 0;
    double lowerLeftCorner[3] = {};
    double upperRightCorner[3] = {};
    std::int32_t sizeFlags[3] = {};
    double textureOrigin[3] = {};
    double textureAlignment[3] = {};
    double textureShear[3] = {};
    double geometryOrigin[3] = {};
    double geometryAlignment[3] = {};
    double geometryShear[3] = {};
    std::int32_t activeTexturePoint = 0;
    std::int32_t displayType = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("toolState", self.toolState, "  toolState: ");
        visit("activeGeometryPoint", self.activeGeometryPoint, "  activeGeometryPoint: ");
        visit("lowerLeftCorner", self.lowerLeftCorner, dumpAs::list(",", "  lowerLeftCorner : (", ")"));
        visit("upperRightCorner", self.upperRightCorner, dumpAs::list(",", "  upperRightCorner : (", ")"));
        visit("sizeFlags", self.sizeFlags, dumpAs::list(",", "  sizeFlags : (", ")"));
        visit("textureOrigin", self.textureOrigin, dumpAs::list(",", "  textureOrigin : (", ")"));
        visit("textureAlignment", self.textureAlignment, dumpAs::list(",", "  textureAlignment : (", ")"));
        visit("textureShear", self.textureShear, dumpAs::list(",", "  textureShear : (", ")"));
        visit("geometryOrigin", self.geometryOrigin, dumpAs::list(",", "  geometryOrigin : (", ")"));
        visit("geometryAlignment", self.geometryAlignment, dumpAs::list(",", "  geometryAlignment : (", ")"));
        visit("geometryShear", self.geometryShear, dumpAs::list(",", "  geometryShear : (", ")"));
        visit("activeTexturePoint", self.activeTexturePoint, "  activeTexturePoint : ");
        visit("displayType", self.displayType, "  displayType : ");
    }
};

/// The block of a point put mapping (type 2).
struct FltPointPutTextureMappingStruct {
    std::int32_t toolState = 0;
    std::int32_t activeGeometryPoint = 0;
    double lowerLeftCorner[3] = {};
    double upperRightCorner[3] = {};
    std::int32_t sizeFlags[4] = {};
    double textureOrigin[3] = {};
    double textureAlignment[3] = {};
    double textureShear[3] = {};
    double texturePerspective[3] = {};
    double geometryOrigin[3] = {};
    double geometryAlignment[3] = {};
    double geometryShear[3] = {};
    double geometryPerspective[3] = {};
    std::int32_t activeTexturePoint = 0;
    std::int32_t reserved1 = 0;
    float depthScale = 0;
    double matrix[16] = {};
    std::int32_t reserved2 = 0;
    std::int32_t reserved3 = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit, bool hasLastWords)
    {
        visit("toolState", self.toolState, "  toolState: ");
        visit("activeGeometryPoint", self.activeGeometryPoint, "  activeGeometryPoint: ");
        visit("lowerLeftCorner", self.lowerLeftCorner, dumpAs::list(",", "  lowerLeftCorner : (", ")"));
        visit("upperRightCorner", self.upperRightCorner, dumpAs::list(",", "  upperRightCorner : (", ")"));
        visit("sizeFlags", self.sizeFlags, dumpAs::list(",", "  sizeFlags : (", ")"));
        visit("textureOrigin", self.textureOrigin, dumpAs::list(",", "  textureOrigin : (", ")"));
        visit("textureAlignment", self.textureAlignment, dumpAs::list(",", "  textureAlignment : (", ")"));
        visit("textureShear", self.textureShear, dumpAs::list(",", "  textureShear : (", ")"));
        visit("texturePerspective", self.texturePerspective,
              dumpAs::list(",", "  texturePerspective : (", ")"));
        visit("geometryOrigin", self.geometryOrigin, dumpAs::list(",", "  geometryOrigin : (", ")"));
        visit("geometryAlignment", self.geometryAlignment, dumpAs::list(",", "  geometryAlignment : (", ")"));
        visit("geometryShear", self.geometryShear, dumpAs::list(",", "  geometryShear : (", ")"));
        visit("geometryPerspective", self.geometryPerspective,
              dumpAs::list(",", "  geometryPerspective : (", ")"));
        visit("activeTexturePoint", self.activeTexturePoint, "  activeTexturePoint : ");
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("depthScale", self.depthScale, "  depthScale : ");
        visit("matrix", self.matrix, dumpAs::rows(4));
        if (visit.when(hasLastWords)) {
            visit("reserved2", self.reserved2, dumpAs::nothing);
            visit("reserved3", self.reserved3, dumpAs::nothing);
        } else {
            visit.preset(self.reserved2, 0);
            visit.preset(self.reserved3, 0);
        }
    }
};

/// The block of a spherical mapping (type 4).
struct FltSphericalTextureMappingStruct {
    float scale = 0;
    double center[3] = {};
    float scaleRatio = 0;
    float maxDimension = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("scale", self.scale, "  scale : ");
        visit("center", self.center, dumpAs::list(",", "  center : (", ")"));
        visit("scaleRatio", self.scaleRatio, "  scaleRatio : ");
        visit("maxDimension", self.maxDimension, "  maxDimension : ");
    }
};

/// The block of a radial mapping (type 5).
struct FltRadialTextureMappingStruct {
    std::int32_t activeGeometryPoint = 0;
    std::int32_t reserved = 0;
    float radialScale = 0;
    float lengthScale = 0;
    double matrix[16] = {};
    double endPoint1[3] = {};
    double endPoint2[3] = {};

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("activeGeometryPoint", self.activeGeometryPoint, "activeGeometryPoint : ");
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("radialScale", self.radialScale, "radialScale : ");
        visit("lengthScale", self.lengthScale, "lengthScale : ");
        visit("matrix", self.matrix, dumpAs::rows(4));
        visit("endPoint1", self.endPoint1, dumpAs::list(",", "  endPoint1 : (", ")"));
        visit("endPoint2", self.endPoint2, dumpAs::list(",", "  endPoint2 : (", ")"));
    }
};

/// The block of a warped mapping (warpedFlag not zero).
///
/// Seen as cells of eight bytes, the points take the cells 17 to 90. They are not stored as they stand in the
/// file: pair i of the from points goes to the cells 17 + 8i and 18 + 8i, and pair i of the to points, later,
/// to 33 + 8i and 34 + 8i. So all from pairs but the first two are overwritten. Cells without a value are 0.
struct FltWarpedTextureMappingStruct {
    static constexpr int pointCount = 8;
    static constexpr int stride = 8; ///< Cells from one pair to the next.

    double* fromPoint() { return cells; }
    double const* fromPoint() const { return cells; }
    double* toPoint() { return cells + 2 * pointCount; }
    double const* toPoint() const { return cells + 2 * pointCount; }

    std::int32_t activeGeometryPoint = 0;
    std::int32_t toolState = 0;
    double matrix[16] = {};
    double cells[74] = {}; ///< Cells 17 to 90 of the block: fromPoint() is cell 17 and toPoint() cell 33.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("activeGeometryPoint", self.activeGeometryPoint, "activeGeometryPoint : ");
        visit("toolState", self.toolState, "toolState : ");
        visit("matrix", self.matrix, dumpAs::rows(4));
        if constexpr (Visitor::decodes) {
            for (int i = 0; i < pointCount; ++i)
                visit.values("fromPoint", self.fromPoint() + stride * i, 2);
            for (int i = 0; i < pointCount; ++i)
                visit.values("toPoint", self.toPoint() + stride * i, 2);
        }
        if constexpr (Visitor::dumps)
            self.dumpPoints(visit.dump);
        if constexpr (Visitor::lists)
            visit.values("cells", self.cells, static_cast<int>(std::size(self.cells)));
    }

private:
    void dumpPoints(FltDump& dump) const;
};

/// How a texture lies on geometry: put, point put, spherical, radial or warped.
///
/// A record that has both a type and the flag reads the same bytes under two layouts.
class FltRecordTextureMappingPalette : public PaletteFltRecord
{
public:
    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::textureMappingPalette; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// @name The dump of one block: its title line, then its fields
    /// Without the block the title line is all. @return @p os
    /// @{
    virtual std::ostream& putTMproperties(std::ostream& os) const;
    virtual std::ostream& pointPutTMproperties(std::ostream& os) const;
    virtual std::ostream& sphericalTMproperties(std::ostream& os) const;
    virtual std::ostream& radialTMproperties(std::ostream& os) const;
    virtual std::ostream& warpedTMproperties(std::ostream& os) const;
    /// @}

    /// @name Filling one block from its first byte
    /// @{
    void getPropertiesPutTMFromData(FltPutTextureMappingStruct& block, char* data);
    void getPropertiesPointPutTMFromData(FltPointPutTextureMappingStruct& block, char* data);
    void getPropertiesSphericalTMFromData(FltSphericalTextureMappingStruct& block, char* data);
    void getPropertiesRadialTMFromData(FltRadialTextureMappingStruct& block, char* data);
    void getPropertiesWarpedTMFromData(FltWarpedTextureMappingStruct& block, char* data);
    /// @}

    std::int32_t reserved = 0;
    std::int32_t index = 0;
    char name[20] = {};
    std::int32_t type = 0;
    std::int32_t warpedFlag = 0;
    double transformationMatrix[16] = {}; ///< Not dumped.

    /// @name The blocks: one of a type at most, and the warped one; null where the record has none
    /// @{
    std::unique_ptr<FltPutTextureMappingStruct> putTM;
    std::unique_ptr<FltPointPutTextureMappingStruct> pointPutTM;
    std::unique_ptr<FltSphericalTextureMappingStruct> sphericalTM;
    std::unique_ptr<FltRadialTextureMappingStruct> radialTM;
    std::unique_ptr<FltWarpedTextureMappingStruct> warpedTM;
    /// @}

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        headFields(self, visit);
        auto const block = visit.place();
        blockFields("put", self.type == put, self.putTM, visit, block);
        blockFields("pointPut", self.type == pointPut, self.pointPutTM, visit, block,
                    self.length > lengthWithoutLastWords);
        blockFields("spherical", self.type == spherical, self.sphericalTM, visit, block);
        blockFields("radial", self.type == radial, self.radialTM, visit, block);
        blockFields("warped", self.warpedFlag != 0, self.warpedTM, visit, block);
    }

private:
    enum Type { put = 1, pointPut = 2, spherical = 4, radial = 5 };

    /// Above this length a record holds the last words of the point put block.
    static constexpr unsigned int lengthWithoutLastWords = 576;

    template <class Self, class Visitor>
    static void headFields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("index", self.index, " index: ");
        visit("name", self.name, dumpAs::text(" name: ", &self + 1));
        visit("type", self.type, " type: ");
        visit("warpedFlag", self.warpedFlag, " warpedFlag: ");
        visit("transformationMatrix", self.transformationMatrix, dumpAs::nothing);
    }
    template <class Block, class Visitor, class Place, class... Arguments>
    static void blockFields(char const* name, bool isThere, std::unique_ptr<Block> const& block,
                            Visitor& visit, Place place, Arguments... arguments)
    {
        static Block const none;
        if (!visit.when(isThere))
            return;
        visit.goTo(place);
        visit.open(name);
        Block::fields(block != nullptr ? *block : none, visit, arguments...);
        visit.close();
    }
};
