#include "visual/FltJointMotion.h"

namespace
{

SbVec3f currentOf(FltDegreeOfFreedom::Range const (&ranges)[3])
{
    return {static_cast<float>(ranges[0].current), static_cast<float>(ranges[1].current),
            static_cast<float>(ranges[2].current)};
}

SbRotation turn(float x, float y, float z, double degrees)
{
    constexpr double radiansPerDegree = 0.017453292519943295;
    return {SbVec3f(x, y, z), static_cast<float>(degrees * radiansPerDegree)};
}

} // namespace

FltJointMotion::FltJointMotion(FltDegreeOfFreedom const& joint)
    : scale(currentOf(joint.scale)),
      // The one on the left acts first.
      rotation(turn(0, 1, 0, joint.roll.current) * turn(1, 0, 0, joint.pitch.current) *
               turn(0, 0, 1, joint.yaw.current)),
      translation(currentOf(joint.translation))
{
    for (int axis = 0; axis < 3; ++axis)
        if (joint.scale[axis].current == 0)
            scale[axis] = 1;
}

SbMatrix FltJointMotion::matrix() const
{
    SbMatrix matrix;
    matrix.setTransform(translation, rotation, scale);
    return matrix;
}
