#include "visual/FltJointMotion.h"

#include <gtest/gtest.h>

namespace
{

SbVec3f moved(FltDegreeOfFreedom const& joint, SbVec3f const& point)
{
    SbVec3f result;
    FltJointMotion(joint).matrix().multVecMatrix(point, result);
    return result;
}

} // namespace

TEST(FltJointMotion, isNoneWithoutValues)
{
    EXPECT_TRUE(moved({}, SbVec3f(1, 2, 3)).equals(SbVec3f(1, 2, 3), 1e-6F));
}

TEST(FltJointMotion, scalesFirstAndTakes0For1)
{
    FltDegreeOfFreedom joint;
    joint.scale[0].current = 2;
    joint.scale[2].current = -1;
    joint.translation[0].current = 10;
    EXPECT_TRUE(moved(joint, SbVec3f(1, 2, 3)).equals(SbVec3f(12, 2, -3), 1e-5F));
}

TEST(FltJointMotion, rollsThenPitchesThenYaws)
{
    FltDegreeOfFreedom joint;
    joint.roll.current = 90;
    EXPECT_TRUE(moved(joint, SbVec3f(0, 0, 1)).equals(SbVec3f(1, 0, 0), 1e-6F));
    joint.pitch.current = 90;
    EXPECT_TRUE(moved(joint, SbVec3f(1, 0, 0)).equals(SbVec3f(0, 1, 0), 1e-6F));
    joint.yaw.current = 90;
    EXPECT_TRUE(moved(joint, SbVec3f(1, 0, 0)).equals(SbVec3f(-1, 0, 0), 1e-6F));
    EXPECT_TRUE(moved(joint, SbVec3f(0, 1, 0)).equals(SbVec3f(0, 0, 1), 1e-6F));
}

TEST(FltJointMotion, isWhatTheToolkitMakesOfIt)
{
    FltDegreeOfFreedom joint;
    joint.translation[1].current = 4;
    joint.pitch.current = 30;
    joint.roll.current = -50;
    joint.yaw.current = 200;
    joint.scale[1].current = 3;
    FltJointMotion const motion(joint);
    SbMatrix expected;
    expected.setTransform(motion.translation, motion.rotation, motion.scale);
    EXPECT_TRUE(motion.matrix().equals(expected, 0));
}
