#include "complete/FltDOFNodes.h"

#include "records/FltRecordDOF.h"

#include <Inventor/SbVec3d.h>
#include <Inventor/nodes/SoInfo.h>
#include <cmath>
#include <iomanip>
#include <locale>
#include <sstream>

namespace
{

using Range = FltCompleteDOF::Range;

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
SbMatrix frameOf(FltRecordDOF const& dof)
{
    SbVec3d const origin(dof.XOriginOfDOFLocalCoordinateSystem, dof.YOriginOfDOFLocalCoordinateSystem,
                         dof.ZOriginOfDOFLocalCoordinateSystem);
    if (isUnset(origin))
        return SbMatrix::identity();
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
    SbMat rows;
    for (int i = 0; i < 3; ++i) {
        rows[0][i] = static_cast<float>(x[i]);
        rows[1][i] = static_cast<float>(y[i]);
        rows[2][i] = static_cast<float>(z[i]);
        rows[3][i] = static_cast<float>(origin[i]);
        rows[i][3] = 0;
    }
    rows[3][3] = 1;
    return SbMatrix(rows);
}

Range rangeOf(double minimum, double maximum, double current, double step, bool isLimited)
{
    return {minimum, maximum, std::isfinite(current) ? current : 0, step, isLimited};
}

void readRanges(FltCompleteDOF& to, FltRecordDOF const& dof)
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

std::string describe(FltCompleteDOF const& dof)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    auto const line = [&text](char const* name, Range const& range) {
        text << '\n'
             << name << " min " << range.minimum << " max " << range.maximum << " current " << range.current
             << " step " << range.step << (range.isLimited ? " limited" : "");
    };
    text << "degree of freedom";
    line("x", dof.translation[0]);
    line("y", dof.translation[1]);
    line("z", dof.translation[2]);
    line("pitch", dof.pitch);
    line("roll", dof.roll);
    line("yaw", dof.yaw);
    line("x scale", dof.scale[0]);
    line("y scale", dof.scale[1]);
    line("z scale", dof.scale[2]);
    return text.str();
}

} // namespace

FltCompleteDOF FltDOFNodes::addTo(FltGroupBuilder& group, FltRecordView const& record,
                                  std::string const& name)
{
    FltRecordDOF values(record.classLength());
    record.decodeTo(values);
    FltCompleteDOF dof;
    dof.name = name;
    readRanges(dof, values);
    dof.transform = SoNodeRef<SoTransform>(new SoTransform);
    dof.apply();

    auto* const info = new SoInfo;
    info->string = describe(dof).c_str();
    group.addProperty(info);
    SbMatrix const frame = frameOf(values);
    bool const hasFrame = !(frame == SbMatrix::identity());
    if (hasFrame)
        group.addMatrix(frame);
    group.addProperty(dof.transform.get());
    SbMatrix motion;
    motion.setTransform(dof.transform->translation.getValue(), dof.transform->rotation.getValue(),
                        dof.transform->scaleFactor.getValue());
    group.stackMatrix(motion);
    if (hasFrame)
        group.addMatrix(frame.inverse());
    return dof;
}
