#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>
#include <memory>

/// The block of a put mapping (type 1).
///
/// | Offset | Type       | Field                                                                        |
/// |--------|------------|------------------------------------------------------------------------------|
/// | 0      | int32      | `toolState`, `activeGeometryPoint`                                           |
/// | 8      | float64[3] | `lowerLeftCorner`, `upperRightCorner`                                        |
/// | 56     | int32[3]   | `sizeFlags`                                                                  |
/// | 68     | float64[3] | `textureOrigin`, `textureAlignment`, `textureShear`                          |
/// | 140    | float64[3] | `geometryOrigin`, `geometryAlignment`, `geometryShear`                       |
/// | 212    | int32      | `activeTexturePoint`, `displayType`                                          |
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
};

/// The block of a point put mapping (type 2).
///
/// | Offset | Type        | Field                                                                       |
/// |--------|-------------|-----------------------------------------------------------------------------|
/// | 0      | int32       | `toolState`, `activeGeometryPoint`                                          |
/// | 8      | float64[3]  | `lowerLeftCorner`, `upperRightCorner`                                       |
/// | 56     | int32[4]    | `sizeFlags`                                                                 |
/// | 72     | float64[3]  | `textureOrigin`, `textureAlignment`, `textureShear`, `texturePerspective`   |
/// | 168    | float64[3]  | `geometryOrigin`, `geometryAlignment`, `geometryShear`                      |
/// | 240    | float64[3]  | `geometryPerspective`                                                       |
/// | 264    | int32       | `activeTexturePoint`                                                        |
/// | 268    | int32       | reserved                                                                    |
/// | 272    | float32     | `depthScale`                                                                |
/// | 276    | float64[16] | `matrix`                                                                    |
/// | 404    | int32[2]    | reserved: read only in a record of more than 576 bytes, and zero otherwise  |
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
};

/// The block of a spherical mapping (type 4).
///
/// | Offset | Type       | Field                         |
/// |--------|------------|-------------------------------|
/// | 0      | float32    | `scale`                       |
/// | 4      | float64[3] | `center`                      |
/// | 28     | float32    | `scaleRatio`, `maxDimension`  |
struct FltSphericalTextureMappingStruct {
    float scale = 0;
    double center[3] = {};
    float scaleRatio = 0;
    float maxDimension = 0;
};

/// The block of a radial mapping (type 5).
///
/// | Offset | Type        | Field                         |
/// |--------|-------------|-------------------------------|
/// | 0      | int32       | `activeGeometryPoint`         |
/// | 4      | int32       | reserved                      |
/// | 8      | float32     | `radialScale`, `lengthScale`  |
/// | 16     | float64[16] | `matrix`                      |
/// | 144    | float64[3]  | `endPoint1`, `endPoint2`      |
struct FltRadialTextureMappingStruct {
    std::int32_t activeGeometryPoint = 0;
    std::int32_t reserved = 0;
    float radialScale = 0;
    float lengthScale = 0;
    double matrix[16] = {};
    double endPoint1[3] = {};
    double endPoint2[3] = {};
};

/// The block of a warped mapping (warpedFlag not zero).
///
/// | Offset | Type        | Field                               |
/// |--------|-------------|-------------------------------------|
/// | 0      | int32       | `activeGeometryPoint`, `toolState`  |
/// | 8      | float64[16] | `matrix`                            |
/// | 136    | float64[16] | `fromPoint`: eight pairs of x and y |
/// | 264    | float64[16] | `toPoint`: eight pairs of x and y   |
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
};

/// How a texture lies on geometry: put, point put, spherical, radial or warped.
///
/// | Offset | Type        | Field                                                                       |
/// |--------|-------------|-----------------------------------------------------------------------------|
/// | 4      | int32       | reserved                                                                    |
/// | 8      | int32       | `index`                                                                     |
/// | 12     | char[20]    | `name`                                                                      |
/// | 32     | int32       | `type`: 1 put, 2 point put, 4 spherical, 5 radial                           |
/// | 36     | int32       | `warpedFlag`                                                                |
/// | 40     | float64[16] | `transformationMatrix`                                                      |
/// | 168    |             | the block of the type; if `warpedFlag` isn't zero the warped block as well  |
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

    /// @name The dump of one block: its title line, then its fields. @return @p os
    /// Without the block the title line is all.
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
};
