#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A node with a coordinate system of its own, in which it may be moved, turned and scaled between limits.
///
/// Lengths are in database units, angles in degrees.
class FltRecordDOF : public FltRecordOf<FltRecordDOF, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::dof;
    static constexpr std::string_view title = "\n DOF RECORD ";

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

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("idASCII", self.idASCII, dumpAs::text(&self.flags + 1));
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XOriginOfDOFLocalCoordinateSystem", self.XOriginOfDOFLocalCoordinateSystem);
        visit("YOriginOfDOFLocalCoordinateSystem", self.YOriginOfDOFLocalCoordinateSystem);
        visit("ZOriginOfDOFLocalCoordinateSystem", self.ZOriginOfDOFLocalCoordinateSystem);
        visit("XPointOnXAxisOfDOFLocalCoordinateSystem", self.XPointOnXAxisOfDOFLocalCoordinateSystem,
              "XPointOnXAxisOfDOFLocalCoordinateSystem : ");
        visit("YPointOnXAxisOfDOFLocalCoordinateSystem", self.YPointOnXAxisOfDOFLocalCoordinateSystem);
        visit("ZPointOnXAxisOfDOFLocalCoordinateSystem", self.ZPointOnXAxisOfDOFLocalCoordinateSystem,
              "ZPointOnXAxisOfDOFLocalCoordinateSystem : ");
        visit.show("");
        visit("XPointInXYPlaneOfDOFLocalCoordinateSystem", self.XPointInXYPlaneOfDOFLocalCoordinateSystem);
        visit("YPointInXYPlaneOfDOFLocalCoordinateSystem", self.YPointInXYPlaneOfDOFLocalCoordinateSystem);
        visit("ZPointInXYPlaneOfDOFLocalCoordinateSystem", self.ZPointInXYPlaneOfDOFLocalCoordinateSystem,
              "ZPointInXYPlaneOfDOFLocalCoordinateSystem : ");
        visit.show("");
        visit("ZMinValue", self.ZMinValue);
        visit("ZMaxValue", self.ZMaxValue);
        visit("ZCurrentValue", self.ZCurrentValue);
        visit("ZIncrement", self.ZIncrement);
        visit.show("");
        visit("YMinValue", self.YMinValue);
        visit("YMaxValue", self.YMaxValue);
        visit("YCurrentValue", self.YCurrentValue);
        visit("YIncrement", self.YIncrement);
        visit.show("");
        visit("XMinValue", self.XMinValue);
        visit("XMaxValue", self.XMaxValue);
        visit("XCurrentValue", self.XCurrentValue);
        visit("XIncrement", self.XIncrement);
        visit.show("");
        visit("minimumPitch", self.minimumPitch);
        visit("maxPitch", self.maxPitch, "maxPitch : ");
        visit("currentPitch", self.currentPitch);
        visit("incrementInPitch", self.incrementInPitch);
        visit.show("");
        visit("minimumRoll", self.minimumRoll);
        visit("maxRoll", self.maxRoll, "maxRoll : ");
        visit("currentRoll", self.currentRoll);
        visit("incrementInRoll", self.incrementInRoll);
        visit.show("");
        visit("minimumYaw", self.minimumYaw);
        visit("maxYaw", self.maxYaw, "maxYaw : ");
        visit("currentYaw", self.currentYaw);
        visit("incrementInYaw", self.incrementInYaw);
        visit.show("");
        visit("ZMinScale", self.ZMinScale, "ZMinScale   : ");
        visit("ZMaxScale", self.ZMaxScale, "ZMaxScale  : ");
        visit("ZCurrentScale", self.ZCurrentScale);
        visit("ZIncrementForScale", self.ZIncrementForScale);
        visit.show("");
        visit("YMinScale", self.YMinScale, "YMinScale   : ");
        visit("YMaxScale", self.YMaxScale, "YMaxScale  : ");
        visit("YCurrentScale", self.YCurrentScale);
        visit("YIncrementForScale", self.YIncrementForScale);
        visit.show("");
        visit("XMinScale", self.XMinScale, "XMinScale : ");
        visit("XMaxScale", self.XMaxScale, "XMaxScale : ");
        visit("XCurrentScale", self.XCurrentScale);
        visit("XIncrementForScale", self.XIncrementForScale, "XIncrementForScale    : ");
        visit.show("");
        visit("flags", self.flags, dumpAs::heading);
        visit.flag("xTranslationIsLimited", self.flags, 31, "     x translation is limited: ");
        visit.flag("yTranslationIsLimited", self.flags, 30, "     y translation is limited: ");
        visit.flag("zTranslationIsLimited", self.flags, 29, "     z translation is limited: ");
        visit.flag("pitchRotationIsLimited", self.flags, 28, "     pitch rotation is limited: ");
        visit.flag("rollRotationIsLimited", self.flags, 27, "     roll rotation is limited: ");
        visit.flag("yawRotationIsLimited", self.flags, 26, "     yaw rotation is limited: ");
        visit.flag("xScaleIsLimited", self.flags, 25, "     x scale is limited: ");
        visit.flag("yScaleIsLimited", self.flags, 24, "     y scale is limited: ");
        visit.flag("zScaleIsLimited", self.flags, 23, "     z scale is limited: ");
    }
};
