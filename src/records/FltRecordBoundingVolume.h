#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// The box around a node in whole numbers, as old files have it.
///
/// | Offset | Type  | Field                      |
/// |--------|-------|----------------------------|
/// | 4      | int32 | `XcoordinateLowestCorner`  |
/// | 8      | int32 | `YcoordinateLowestCorner`  |
/// | 12     | int32 | `ZcoordinateLowestCorner`  |
/// | 16     | int32 | `XcoordinateHighestCorner` |
/// | 20     | int32 | `YcoordinateHighestCorner` |
/// | 24     | int32 | `ZcoordinateHighestCorner` |
class FltRecordOldBoundingBox : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::oldBoundingBox; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t XcoordinateLowestCorner = 0;
    std::int32_t YcoordinateLowestCorner = 0;
    std::int32_t ZcoordinateLowestCorner = 0;
    std::int32_t XcoordinateHighestCorner = 0;
    std::int32_t YcoordinateHighestCorner = 0;
    std::int32_t ZcoordinateHighestCorner = 0;
};

/// The box around a node.
///
/// | Offset | Type    | Field                      |
/// |--------|---------|----------------------------|
/// | 4      | int32   | reserved                   |
/// | 8      | float64 | `XcoordinateLowestCorner`  |
/// | 16     | float64 | `YcoordinateLowestCorner`  |
/// | 24     | float64 | `ZcoordinateLowestCorner`  |
/// | 32     | float64 | `XcoordinateHighestCorner` |
/// | 40     | float64 | `YcoordinateHighestCorner` |
/// | 48     | float64 | `ZcoordinateHighestCorner` |
class FltRecordBoundingBox : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingBox; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double XcoordinateLowestCorner = 0;
    double YcoordinateLowestCorner = 0;
    double ZcoordinateLowestCorner = 0;
    double XcoordinateHighestCorner = 0;
    double YcoordinateHighestCorner = 0;
    double ZcoordinateHighestCorner = 0;
};

/// The sphere around a node.
///
/// | Offset | Type    | Field    |
/// |--------|---------|----------|
/// | 4      | int32   | reserved |
/// | 8      | float64 | `radius` |
class FltRecordBoundingVolumeSphere : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeSphere; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double radius = 0;
};

/// The cylinder around a node.
///
/// | Offset | Type    | Field     |
/// |--------|---------|-----------|
/// | 4      | int32   | reserved  |
/// | 8      | float64 | `radius`  |
/// | 16     | float64 | `heitght` |
class FltRecordBoundingVolumeCylinder : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeCylinder; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double radius = 0;
    double heitght = 0;
};

/// The centre of the bounding volume that stands before it.
///
/// | Offset | Type    | Field               |
/// |--------|---------|---------------------|
/// | 4      | int32   | reserved            |
/// | 8      | float64 | `XcoordinateCenter` |
/// | 16     | float64 | `YcoordinateCenter` |
/// | 24     | float64 | `ZcoordinateCenter` |
class FltRecordBoundingVolumeCenter : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeCenter; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double XcoordinateCenter = 0;
    double YcoordinateCenter = 0;
    double ZcoordinateCenter = 0;
};

/// The orientation of the bounding volume that stands before it.
///
/// | Offset | Type    | Field        |
/// |--------|---------|--------------|
/// | 4      | int32   | reserved     |
/// | 8      | float64 | `yawAngle`   |
/// | 16     | float64 | `pitchAngle` |
/// | 24     | float64 | `rollAngle`  |
class FltRecordBoundingVolumeOrientation : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeOrientation; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double yawAngle = 0;   ///< In degrees.
    double pitchAngle = 0; ///< In degrees.
    double rollAngle = 0;  ///< In degrees.
};
