#include "scene/FltSceneJoint.h"

#include "visual/FltJointMotion.h"

void FltSceneJoint::move(FltDegreeOfFreedom const& values)
{
    for (int axis = 0; axis < 3; ++axis) {
        translation[axis].current = values.translation[axis].current;
        scale[axis].current = values.scale[axis].current;
    }
    pitch.current = values.pitch.current;
    roll.current = values.roll.current;
    yaw.current = values.yaw.current;
    apply();
}

void FltSceneJoint::apply()
{
    FltJointMotion const motion(*this);
    transform->translation = motion.translation;
    transform->rotation = motion.rotation;
    transform->scaleFactor = motion.scale;
}
