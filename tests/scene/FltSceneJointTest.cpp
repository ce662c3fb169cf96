#include "scene/FltSceneJoint.h"

#include <gtest/gtest.h>

TEST(FltSceneJoint, movesItsNodeToTheValuesOfAnother)
{
    FltSceneJoint joint;
    joint.transform = SoNodeRef<SoTransform>(new SoTransform);
    joint.name = "door";
    FltDegreeOfFreedom values;
    values.name = "other";
    values.translation[0].current = 1;
    values.translation[1].current = 2;
    values.translation[2].current = 3;
    values.scale[1].current = 4;
    values.pitch.current = 10;
    values.roll.current = 20;
    values.yaw.current = 90;
    values.yaw.maximum = 5;
    joint.move(values);
    EXPECT_EQ(joint.name, "door");
    EXPECT_EQ(joint.yaw.maximum, 0);
    EXPECT_EQ(joint.pitch.current, 10);
    EXPECT_EQ(joint.roll.current, 20);
    EXPECT_EQ(joint.transform->translation.getValue(), SbVec3f(1, 2, 3));
    EXPECT_EQ(joint.transform->scaleFactor.getValue(), SbVec3f(1, 4, 1));
    values.pitch.current = values.roll.current = 0;
    joint.move(values);
    SbVec3f turned;
    joint.transform->rotation.getValue().multVec(SbVec3f(1, 0, 0), turned);
    EXPECT_TRUE(turned.equals(SbVec3f(0, 1, 0), 1e-6F));
}
