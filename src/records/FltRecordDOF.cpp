#include "records/FltRecordDOF.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordDOF::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n DOF RECORD ");
}

void FltRecordDOF::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(idASCII, sizeof idASCII, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XOriginOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&YOriginOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZOriginOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&XPointOnXAxisOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&YPointOnXAxisOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZPointOnXAxisOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&XPointInXYPlaneOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&YPointInXYPlaneOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZPointInXYPlaneOfDOFLocalCoordinateSystem, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZMinValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZMaxValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZCurrentValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZIncrement, cursor);
    FltUtils::getDouble64ValueThenDecal(&YMinValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&YMaxValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&YCurrentValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&YIncrement, cursor);
    FltUtils::getDouble64ValueThenDecal(&XMinValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&XMaxValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&XCurrentValue, cursor);
    FltUtils::getDouble64ValueThenDecal(&XIncrement, cursor);
    FltUtils::getDouble64ValueThenDecal(&minimumPitch, cursor);
    FltUtils::getDouble64ValueThenDecal(&maxPitch, cursor);
    FltUtils::getDouble64ValueThenDecal(&currentPitch, cursor);
    FltUtils::getDouble64ValueThenDecal(&incrementInPitch, cursor);
    FltUtils::getDouble64ValueThenDecal(&minimumRoll, cursor);
    FltUtils::getDouble64ValueThenDecal(&maxRoll, cursor);
    FltUtils::getDouble64ValueThenDecal(&currentRoll, cursor);
    FltUtils::getDouble64ValueThenDecal(&incrementInRoll, cursor);
    FltUtils::getDouble64ValueThenDecal(&minimumYaw, cursor);
    FltUtils::getDouble64ValueThenDecal(&maxYaw, cursor);
    FltUtils::getDouble64ValueThenDecal(&currentYaw, cursor);
    FltUtils::getDouble64ValueThenDecal(&incrementInYaw, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZMinScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZMaxScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZCurrentScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZIncrementForScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&YMinScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&YMaxScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&YCurrentScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&YIncrementForScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&XMinScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&XMaxScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&XCurrentScale, cursor);
    FltUtils::getDouble64ValueThenDecal(&XIncrementForScale, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
}

std::ostream& FltRecordDOF::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::text(os, "idASCII: ", idASCII, &flags + 1); // the object's end, but for its padding
    FltDump::line(os, "XOriginOfDOFLocalCoordinateSystem: ", XOriginOfDOFLocalCoordinateSystem);
    FltDump::line(os, "YOriginOfDOFLocalCoordinateSystem: ", YOriginOfDOFLocalCoordinateSystem);
    FltDump::line(os, "ZOriginOfDOFLocalCoordinateSystem: ", ZOriginOfDOFLocalCoordinateSystem);
    FltDump::line(os, "XPointOnXAxisOfDOFLocalCoordinateSystem : ", XPointOnXAxisOfDOFLocalCoordinateSystem);
    FltDump::line(os, "YPointOnXAxisOfDOFLocalCoordinateSystem: ", YPointOnXAxisOfDOFLocalCoordinateSystem);
    FltDump::line(os, "ZPointOnXAxisOfDOFLocalCoordinateSystem : ", ZPointOnXAxisOfDOFLocalCoordinateSystem);
    FltDump::line(os, "");
    FltDump::line(os,
                  "XPointInXYPlaneOfDOFLocalCoordinateSystem: ", XPointInXYPlaneOfDOFLocalCoordinateSystem);
    FltDump::line(os,
                  "YPointInXYPlaneOfDOFLocalCoordinateSystem: ", YPointInXYPlaneOfDOFLocalCoordinateSystem);
    FltDump::line(os,
                  "ZPointInXYPlaneOfDOFLocalCoordinateSystem : ", ZPointInXYPlaneOfDOFLocalCoordinateSystem);
    FltDump::line(os, "");
    FltDump::line(os, "ZMinValue: ", ZMinValue);
    FltDump::line(os, "ZMaxValue: ", ZMaxValue);
    FltDump::line(os, "ZCurrentValue: ", ZCurrentValue);
    FltDump::line(os, "ZIncrement: ", ZIncrement);
    FltDump::line(os, "");
    FltDump::line(os, "YMinValue: ", YMinValue);
    FltDump::line(os, "YMaxValue: ", YMaxValue);
    FltDump::line(os, "YCurrentValue: ", YCurrentValue);
    FltDump::line(os, "YIncrement: ", YIncrement);
    FltDump::line(os, "");
    FltDump::line(os, "XMinValue: ", XMinValue);
    FltDump::line(os, "XMaxValue: ", XMaxValue);
    FltDump::line(os, "XCurrentValue: ", XCurrentValue);
    FltDump::line(os, "XIncrement: ", XIncrement);
    FltDump::line(os, "");
    FltDump::line(os, "minimumPitch: ", minimumPitch);
    FltDump::line(os, "maxPitch : ", maxPitch);
    FltDump::line(os, "currentPitch: ", currentPitch);
    FltDump::line(os, "incrementInPitch: ", incrementInPitch);
    FltDump::line(os, "");
    FltDump::line(os, "minimumRoll: ", minimumRoll);
    FltDump::line(os, "maxRoll : ", maxRoll);
    FltDump::line(os, "currentRoll: ", currentRoll);
    FltDump::line(os, "incrementInRoll: ", incrementInRoll);
    FltDump::line(os, "");
    FltDump::line(os, "minimumYaw: ", minimumYaw);
    FltDump::line(os, "maxYaw : ", maxYaw);
    FltDump::line(os, "currentYaw: ", currentYaw);
    FltDump::line(os, "incrementInYaw: ", incrementInYaw);
    FltDump::line(os, "");
    FltDump::line(os, "ZMinScale   : ", ZMinScale);
    FltDump::line(os, "ZMaxScale  : ", ZMaxScale);
    FltDump::line(os, "ZCurrentScale: ", ZCurrentScale);
    FltDump::line(os, "ZIncrementForScale: ", ZIncrementForScale);
    FltDump::line(os, "");
    FltDump::line(os, "YMinScale   : ", YMinScale);
    FltDump::line(os, "YMaxScale  : ", YMaxScale);
    FltDump::line(os, "YCurrentScale: ", YCurrentScale);
    FltDump::line(os, "YIncrementForScale: ", YIncrementForScale);
    FltDump::line(os, "");
    FltDump::line(os, "XMinScale : ", XMinScale);
    FltDump::line(os, "XMaxScale : ", XMaxScale);
    FltDump::line(os, "XCurrentScale: ", XCurrentScale);
    FltDump::line(os, "XIncrementForScale    : ", XIncrementForScale);
    FltDump::line(os, "");
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "     x translation is limited: ", flags, 31);
    FltDump::flag(os, "     y translation is limited: ", flags, 30);
    FltDump::flag(os, "     z translation is limited: ", flags, 29);
    FltDump::flag(os, "     pitch rotation is limited: ", flags, 28);
    FltDump::flag(os, "     roll rotation is limited: ", flags, 27);
    FltDump::flag(os, "     yaw rotation is limited: ", flags, 26);
    FltDump::flag(os, "     x scale is limited: ", flags, 25);
    FltDump::flag(os, "     y scale is limited: ", flags, 24);
    FltDump::flag(os, "     z scale is limited: ", flags, 23);
    return os;
}
