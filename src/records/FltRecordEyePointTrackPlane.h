#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// The ten saved eyepoints and ten trackplanes of a file.
///
/// | Offset | Type      | Field                                                       |
/// |--------|-----------|-------------------------------------------------------------|
/// | 4      | int32     | reserved                                                    |
/// | 8      | 272 bytes | the eyepoint, and in its first 128 bytes the trackplane     |
///
/// All ten eyepoints and all ten trackplanes are read from offset 8: they hold the same values, and the later
/// entries of the file are not walked.
class FltRecordEyePointTrackPlane : public PaletteFltRecord
{
public:
    /// A saved point of view, 272 bytes.
    ///
    /// | Offset | Type        | Field                                                                   |
    /// |--------|-------------|-------------------------------------------------------------------------|
    /// | 0      | float64     | `centerX`, `centerY`, `centerZ`                                         |
    /// | 24     | float32     | `yawAngle`, `pitchAngle`, `rollAngle`                                   |
    /// | 36     | float32[16] | `rotationMatrix`                                                        |
    /// | 100    | float32     | `viewField`, `scale`, `nearClippingPlane`, `farClippingPlane`           |
    /// | 116    | float32[16] | `flyThroughMatrix`                                                      |
    /// | 180    | float32     | `eyePointX`, `eyePointY`, `eyePointZ`                                   |
    /// | 192    | float32     | `flyThroughYaw`, `pitchThroughYaw`                                      |
    /// | 200    | float32     | `eyeVectorI`, `eyeVectorJ`, `eyeVectorK`                                |
    /// | 212    | int32       | `flyThroughFlag`, `orthoDrawingFlag`, `isValidEyePointFlag`             |
    /// | 224    | int32       | `imageOffsetX`, `imageOffsetY`, `imageZoom`                             |
    /// | 236    | 32 bytes    | reserved                                                                |
    /// | 268    | int32       | reserved                                                                |
    struct FltEyePointStruct {
        double centerX = 0;
        double centerY = 0;
        double centerZ = 0;
        float yawAngle = 0;
        float pitchAngle = 0;
        float rollAngle = 0;
        float rotationMatrix[16] = {};
        float viewField = 0;
        float scale = 0;
        float nearClippingPlane = 0;
        float farClippingPlane = 0;
        float flyThroughMatrix[16] = {};
        float eyePointX = 0;
        float eyePointY = 0;
        float eyePointZ = 0;
        float flyThroughYaw = 0;
        float pitchThroughYaw = 0;
        float eyeVectorI = 0;
        float eyeVectorJ = 0;
        float eyeVectorK = 0;
        std::int32_t flyThroughFlag = 0;
        std::int32_t orthoDrawingFlag = 0;
        std::int32_t isValidEyePointFlag = 0;
        std::int32_t imageOffsetX = 0;
        std::int32_t imageOffsetY = 0;
        std::int32_t imageZoom = 0;
        char reserved1[32] = {};
        std::int32_t reserved2 = 0;
    };

    /// A plane to draw on, 128 bytes.
    ///
    /// | Offset | Type    | Field                                                                       |
    /// |--------|---------|-----------------------------------------------------------------------------|
    /// | 0      | int32   | `activeFlag`: -1 for a valid trackplane                                     |
    /// | 4      | int32   | reserved                                                                    |
    /// | 8      | float64 | `originX`, `originY`, `originZ`                                             |
    /// | 32     | float64 | `alignmentX`, `alignmentY`, `alignmentZ`                                    |
    /// | 56     | float64 | `planeX`, `planeY`, `planeZ`                                                |
    /// | 80     | int8    | `gridFlag`, `gridType`, `gridUnder`, reserved                               |
    /// | 84     | float32 | `gridAngle`                                                                 |
    /// | 88     | float64 | `gridSpacingX`, `gridSpacingY`                                              |
    /// | 104    | int8    | `radialDirectionControl`, `rectangularDirectionControl`, `gridSnap`         |
    /// | 107    | int8    | reserved                                                                    |
    /// | 108    | int32   | reserved                                                                    |
    /// | 112    | float64 | `gridSize`                                                                  |
    /// | 120    | int32   | `gridVisibilityMask`                                                        |
    /// | 124    | int32   | reserved                                                                    |
    struct FltTrackPlaneStruct {
        std::int32_t activeFlag = 0;
        std::int32_t reserved1 = 0;
        double originX = 0;
        double originY = 0;
        double originZ = 0;
        double alignmentX = 0;
        double alignmentY = 0;
        double alignmentZ = 0;
        double planeX = 0;
        double planeY = 0;
        double planeZ = 0;
        std::int8_t gridFlag = 0;
        std::int8_t gridType = 0;
        std::int8_t gridUnder = 0;
        std::int8_t reserved2 = 0;
        float gridAngle = 0;
        double gridSpacingX = 0;
        double gridSpacingY = 0;
        std::int8_t radialDirectionControl = 0;
        std::int8_t rectangularDirectionControl = 0;
        std::int8_t gridSnap = 0;
        std::int8_t reserved3 = 0;
        std::int32_t reserved4 = 0;
        double gridSize = 0;
        std::int32_t gridVisibilityMask = 0;
        std::int32_t reserved5 = 0;
    };

    using PaletteFltRecord::PaletteFltRecord;

    int getOpcode() const override { return FltOpcode::eyePointTrackPlane; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// Dumps one eyepoint. @return @p os
    virtual std::ostream& eyePointProperties(FltEyePointStruct const& eye, std::ostream& os) const;

    /// Dumps one trackplane; of one whose `activeFlag` isn't -1 only a line that says so. `gridAngle` prints
    /// without its fraction: beyond the range of 32 bits as the nearest end of it, and not a number as 0.
    /// @return @p os
    virtual std::ostream& trackPlaneProperties(FltTrackPlaneStruct const& plane, std::ostream& os) const;

    /// @name Filling one structure from its first byte
    /// @{
    virtual void getEyePointPropertiesFromData(FltEyePointStruct* eye, char* data);
    virtual void getTrackPlanePropertiesFromData(FltTrackPlaneStruct* plane, char* data);
    /// @}

    std::int32_t reserved = 0;
    FltEyePointStruct eyePoint[10];
    FltTrackPlaneStruct trackPlane[10];
};
