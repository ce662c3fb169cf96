#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A record that holds a matrix.
///
/// | Offset | Type          | Field    |
/// |--------|---------------|----------|
/// | 4      | float32[4][4] | `matrix` |
class AbstractMatrixRecord : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    float matrix[4][4] = {}; ///< Row after row, for row vectors: the last row is the translation.
};

/// The matrix that places the node before: the product of all its single steps.
class FltRecordMatrix : public AbstractMatrixRecord
{
public:
    using AbstractMatrixRecord::AbstractMatrixRecord;
    int getOpcode() const override { return FltOpcode::matrix; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// A matrix as one of the single steps.
class FltRecordGeneralMatrix : public AbstractMatrixRecord
{
public:
    using AbstractMatrixRecord::AbstractMatrixRecord;
    int getOpcode() const override { return FltOpcode::generalMatrix; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
};

/// A direction for the node before.
///
/// | Offset | Type    | Field |
/// |--------|---------|-------|
/// | 4      | float32 | `i`   |
/// | 8      | float32 | `j`   |
/// | 12     | float32 | `k`   |
class FltRecordVector : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::vector; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    float i = 0;
    float j = 0;
    float k = 0;
};

/// A turn about the line through two points. The angle is in degrees.
///
/// | Offset | Type    | Field           |
/// |--------|---------|-----------------|
/// | 4      | int32   | reserved        |
/// | 8      | float64 | `XCenter1`      |
/// | 16     | float64 | `YCenter1`      |
/// | 24     | float64 | `ZCenter1`      |
/// | 32     | float64 | `XCenter2`      |
/// | 40     | float64 | `YCenter2`      |
/// | 48     | float64 | `ZCenter2`      |
/// | 56     | float32 | `angleToRotate` |
class FltRecordRotateAboutEdge : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::rotateAboutEdge; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double XCenter1 = 0;
    double YCenter1 = 0;
    double ZCenter1 = 0;
    double XCenter2 = 0;
    double YCenter2 = 0;
    double ZCenter2 = 0;
    float angleToRotate = 0;
};

/// A move: a reference point and how far it goes.
///
/// | Offset | Type    | Field    |
/// |--------|---------|----------|
/// | 4      | int32   | reserved |
/// | 8      | float64 | `x`      |
/// | 16     | float64 | `y`      |
/// | 24     | float64 | `z`      |
/// | 32     | float64 | `deltaX` |
/// | 40     | float64 | `deltaY` |
/// | 48     | float64 | `deltaZ` |
class FltRecordTranslate : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::translate; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double x = 0;
    double y = 0;
    double z = 0;
    double deltaX = 0;
    double deltaY = 0;
    double deltaZ = 0;
};

/// A scale about a centre, with a factor for each axis.
///
/// | Offset | Type    | Field          |
/// |--------|---------|----------------|
/// | 4      | int32   | reserved       |
/// | 8      | float64 | `XCenter`      |
/// | 16     | float64 | `YCenter`      |
/// | 24     | float64 | `ZCenter`      |
/// | 32     | float32 | `XScaleFactor` |
/// | 36     | float32 | `YScaleFactor` |
/// | 40     | float32 | `ZScaleFactor` |
class FltRecordScaleNonUniform : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::scaleNonUniform; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double XCenter = 0;
    double YCenter = 0;
    double ZCenter = 0;
    float XScaleFactor = 0;
    float YScaleFactor = 0;
    float ZScaleFactor = 0;
};

/// A turn about an axis through a point. The angle is in degrees.
///
/// | Offset | Type    | Field               |
/// |--------|---------|---------------------|
/// | 4      | int32   | reserved            |
/// | 8      | float64 | `XCenterOfRotation` |
/// | 16     | float64 | `YCenterOfRotation` |
/// | 24     | float64 | `ZCenterOfRotation` |
/// | 32     | float32 | `IAxisOfRotation`   |
/// | 36     | float32 | `JAxisOfRotation`   |
/// | 40     | float32 | `KAxisOfRotation`   |
/// | 44     | float32 | `angleToRotate`     |
class FltRecordRotateAboutPoint : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::rotateAboutPoint; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double XCenterOfRotation = 0;
    double YCenterOfRotation = 0;
    double ZCenterOfRotation = 0;
    float IAxisOfRotation = 0;
    float JAxisOfRotation = 0;
    float KAxisOfRotation = 0;
    float angleToRotate = 0;
};

/// A move of three points, origin, alignment and track, onto three others. The angle is in degrees.
///
/// The factory never makes one: it reads records of this opcode as FltRecordRotateAboutEdge.
///
/// | Offset | Type    | Field           |
/// |--------|---------|-----------------|
/// | 4      | int32   | reserved        |
/// | 8      | float64 | `XFromOrigin`   |
/// | 16     | float64 | `YFromOrigin`   |
/// | 24     | float64 | `ZFromOrigin`   |
/// | 32     | float64 | `XFromAlign`    |
/// | 40     | float64 | `YFromAlign`    |
/// | 48     | float64 | `ZFromAlign`    |
/// | 56     | float64 | `XFromTrack`    |
/// | 64     | float64 | `YFromTrack`    |
/// | 72     | float64 | `ZFromTrack`    |
/// | 80     | float64 | `XToOrigin`     |
/// | 88     | float64 | `YToOrigin`     |
/// | 96     | float64 | `ZToOrigin`     |
/// | 104    | float64 | `XToAlign`      |
/// | 112    | float64 | `YToAlign`      |
/// | 120    | float64 | `ZToAlign`      |
/// | 128    | float64 | `XToTrack`      |
/// | 136    | float64 | `YToTrack`      |
/// | 144    | float64 | `ZToTrack`      |
/// | 152    | float32 | `angleToRotate` |
class FltRecordPutTransform : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::putTransform; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    std::int32_t reserved = 0;
    double XFromOrigin = 0;
    double YFromOrigin = 0;
    double ZFromOrigin = 0;
    double XFromAlign = 0;
    double YFromAlign = 0;
    double ZFromAlign = 0;
    double XFromTrack = 0;
    double YFromTrack = 0;
    double ZFromTrack = 0;
    double XToOrigin = 0;
    double YToOrigin = 0;
    double ZToOrigin = 0;
    double XToAlign = 0;
    double YToAlign = 0;
    double ZToAlign = 0;
    double XToTrack = 0;
    double YToTrack = 0;
    double ZToTrack = 0;
    float angleToRotate = 0;
};
