#include "visual/FltJointReader.h"

#include "records/FltRecordDOF.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3d.h>
#include <cmath>

namespace
{

using Range = FltDegreeOfFreedom::Range;

/// Modelling programs write this coordinate for points that nobody set.
constexpr double unset = 1e8;

bool isUnset(SbVec3d const& point)
{
    for (int i = 0; i < 3; ++i)
        if (!(std::abs(point[i]) < unset))
            return true;
    return false;
}

/// The local frame of a record, as rows of axes and the origin.
SbDPMatrix frameOf(FltRecordDOF const& dof)
{
    SbVec3d const origin(dof.XOriginOfDOFLocalCoordinateSystem, dof.YOriginOfDOFLocalCoordinateSystem,
                         dof.ZOriginOfDOFLocalCoordinateSystem);
    if (isUnset(origin))
        return SbDPMatrix::identity();
    SbVec3d x =
        SbVec3d(dof.XPointOnXAxisOfDOFLocalCoordinateSystem, dof.YPointOnXAxisOfDOFLocalCoordinateSystem,
                dof.ZPointOnXAxisOfDOFLocalCoordinateSystem) -
        origin;
    SbVec3d y =
        SbVec3d(dof.XPointInXYPlaneOfDOFLocalCoordinateSystem, dof.YPointInXYPlaneOfDOFLocalCoordinateSystem,
                dof.ZPointInXYPlaneOfDOFLocalCoordinateSystem) -
        origin;
    SbVec3d z = x.cross(y);
    if (!(x.normalize() > 0) || !(z.normalize() > 0)) {
        x = SbVec3d(1, 0, 0);
        z = SbVec3d(0, 0, 1);
    }
    y = z.cross(x);
    return {x[0], x[1], x[2], 0, y[0],      y[1],      y[2],      0,
            z[0], z[1], z[2], 0, origin[0], origin[1], origin[2], 1};
}

Range rangeOf(double minimum, double maximum, double current, double step, bool isLimited)
{
    return {minimum, maximum, std::isfinite(current) ? current : 0, step, isLimited};
}

void readRanges(FltDegreeOfFreedom& to, FltRecordDOF const& dof)
{
    auto const limited = [&](int bit) { return (static_cast<std::uint32_t>(dof.flags) >> bit & 1) != 0; };
    to.translation[0] = rangeOf(dof.XMinValue, dof.XMaxValue, dof.XCurrentValue, dof.XIncrement, limited(31));
    to.translation[1] = rangeOf(dof.YMinValue, dof.YMaxValue, dof.YCurrentValue, dof.YIncrement, limited(30));
    to.translation[2] = rangeOf(dof.ZMinValue, dof.ZMaxValue, dof.ZCurrentValue, dof.ZIncrement, limited(29));
    to.pitch = rangeOf(dof.minimumPitch, dof.maxPitch, dof.currentPitch, dof.incrementInPitch, limited(28));
    to.roll = rangeOf(dof.minimumRoll, dof.maxRoll, dof.currentRoll, dof.incrementInRoll, limited(27));
    to.yaw = rangeOf(dof.minimumYaw, dof.maxYaw, dof.currentYaw, dof.incrementInYaw, limited(26));
    to.scale[0] =
        rangeOf(dof.XMinScale, dof.XMaxScale, dof.XCurrentScale, dof.XIncrementForScale, limited(25));
    to.scale[1] =
        rangeOf(dof.YMinScale, dof.YMaxScale, dof.YCurrentScale, dof.YIncrementForScale, limited(24));
    to.scale[2] =
        rangeOf(dof.ZMinScale, dof.ZMaxScale, dof.ZCurrentScale, dof.ZIncrementForScale, limited(23));
}

} // namespace

FltVisualJoint FltJointReader::read(FltRecordView const& record)
{
    FltRecordDOF values(record.classLength());
    record.decodeTo(values);
    FltVisualJoint joint;
    readRanges(joint, values);
    SbDPMatrix const frame = frameOf(values);
    if (!(SbMatrix(frame) == SbMatrix::identity())) // by what a scene holds
        joint.frame = frame;
    return joint;
}
