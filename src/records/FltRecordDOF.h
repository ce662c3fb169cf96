#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// A node with a coordinate system of its own, in which it may be moved, turned and scaled between limits.
///
/// Lengths are in database units, angles in degrees.
///
/// | Offset | Type    | Field                                         |
/// |--------|---------|-----------------------------------------------|
/// | 4      | char[8] | `idASCII`                                     |
/// | 12     | int32   | reserved                                      |
/// | 16     | float64 | `XOriginOfDOFLocalCoordinateSystem`           |
/// | 24     | float64 | `YOriginOfDOFLocalCoordinateSystem`           |
/// | 32     | float64 | `ZOriginOfDOFLocalCoordinateSystem`           |
/// | 40     | float64 | `XPointOnXAxisOfDOFLocalCoordinateSystem`     |
/// | 48     | float64 | `YPointOnXAxisOfDOFLocalCoordinateSystem`     |
/// | 56     | float64 | `ZPointOnXAxisOfDOFLocalCoordinateSystem`     |
/// | 64     | float64 | `XPointInXYPlaneOfDOFLocalCoordinateSystem`   |
/// | 72     | float64 | `YPointInXYPlaneOfDOFLocalCoordinateSystem`   |
/// | 80     | float64 | `ZPointInXYPlaneOfDOFLocalCoordinateSystem`   |
/// | 88     | float64 | `ZMinValue`                                   |
/// | 96     | float64 | `ZMaxValue`                                   |
/// | 104    | float64 | `ZCurrentValue`                               |
/// | 112    | float64 | `ZIncrement`                                  |
/// | 120    | float64 | `YMinValue`                                   |
/// | 128    | float64 | `YMaxValue`                                   |
/// | 136    | float64 | `YCurrentValue`                               |
/// | 144    | float64 | `YIncrement`                                  |
/// | 152    | float64 | `XMinValue`                                   |
/// | 160    | float64 | `XMaxValue`                                   |
/// | 168    | float64 | `XCurrentValue`                               |
/// | 176    | float64 | `XIncrement`                                  |
/// | 184    | float64 | `minimumPitch`                                |
/// | 192    | float64 | `maxPitch`                                    |
/// | 200    | float64 | `currentPitch`                                |
/// | 208    | float64 | `incrementInPitch`                            |
/// | 216    | float64 | `minimumRoll`                                 |
/// | 224    | float64 | `maxRoll`                                     |
/// | 232    | float64 | `currentRoll`                                 |
/// | 240    | float64 | `incrementInRoll`                             |
/// | 248    | float64 | `minimumYaw`                                  |
/// | 256    | float64 | `maxYaw`                                      |
/// | 264    | float64 | `currentYaw`                                  |
/// | 272    | float64 | `incrementInYaw`                              |
/// | 280    | float64 | `ZMinScale`                                   |
/// | 288    | float64 | `ZMaxScale`                                   |
/// | 296    | float64 | `ZCurrentScale`                               |
/// | 304    | float64 | `ZIncrementForScale`                          |
/// | 312    | float64 | `YMinScale`                                   |
/// | 320    | float64 | `YMaxScale`                                   |
/// | 328    | float64 | `YCurrentScale`                               |
/// | 336    | float64 | `YIncrementForScale`                          |
/// | 344    | float64 | `XMinScale`                                   |
/// | 352    | float64 | `XMaxScale`                                   |
/// | 360    | float64 | `XCurrentScale`                               |
/// | 368    | float64 | `XIncrementForScale`                          |
/// | 376    | uint32  | `flags`                                       |
///
/// Flags, each for a limited axis: bit 31 x translation, 30 y, 29 z, 28 pitch, 27 roll, 26 yaw, 25 x scale,
/// 24 y, 23 z.
class FltRecordDOF : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::dof; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    char idASCII[8] = {}; ///< Not terminated when it fills its eight characters.
    std::int32_t reserved = 0;
    double XOriginOfDOFLocalCoordinateSystem = 0;
    double YOriginOfDOFLocalCoordinateSystem = 0;
    double ZOriginOfDOFLocalCoordinateSystem = 0;
    double XPointOnXAxisOfDOFLocalCoordinateSystem = 0;
    double YPointOnXAxisOfDOFLocalCoordinateSystem = 0;
    double ZPointOnXAxisOfDOFLocalCoordinateSystem = 0;
    double XPointInXYPlaneOfDOFLocalCoordinateSystem = 0;
    double YPointInXYPlaneOfDOFLocalCoordinateSystem = 0;
    double ZPointInXYPlaneOfDOFLocalCoordinateSystem = 0;
    double ZMinValue = 0;
    double ZMaxValue = 0;
    double ZCurrentValue = 0;
    double ZIncrement = 0;
    double YMinValue = 0;
    double YMaxValue = 0;
    double YCurrentValue = 0;
    double YIncrement = 0;
    double XMinValue = 0;
    double XMaxValue = 0;
    double XCurrentValue = 0;
    double XIncrement = 0;
    double minimumPitch = 0;
    double maxPitch = 0;
    double currentPitch = 0;
    double incrementInPitch = 0;
    double minimumRoll = 0;
    double maxRoll = 0;
    double currentRoll = 0;
    double incrementInRoll = 0;
    double minimumYaw = 0;
    double maxYaw = 0;
    double currentYaw = 0;
    double incrementInYaw = 0;
    double ZMinScale = 0;
    double ZMaxScale = 0;
    double ZCurrentScale = 0;
    double ZIncrementForScale = 0;
    double YMinScale = 0;
    double YMaxScale = 0;
    double YCurrentScale = 0;
    double YIncrementForScale = 0;
    double XMinScale = 0;
    double XMaxScale = 0;
    double XCurrentScale = 0;
    double XIncrementForScale = 0;
    std::uint32_t flags = 0;
};
