#include "scene/FltNodeInfos.h"

#include <gtest/gtest.h>

TEST(FltNodeInfos, tellOfAJointWhatItsRangesAre)
{
    FltVisualJoint joint;
    joint.translation[1] = {-1, 4, 0.5, 0.25, true};
    joint.scale[2].current = 2;
    EXPECT_EQ(FltNodeInfos::describe(joint), "degree of freedom\n"
                                             "x min 0 max 0 current 0 step 0\n"
                                             "y min -1 max 4 current 0.5 step 0.25 limited\n"
                                             "z min 0 max 0 current 0 step 0\n"
                                             "pitch min 0 max 0 current 0 step 0\n"
                                             "roll min 0 max 0 current 0 step 0\n"
                                             "yaw min 0 max 0 current 0 step 0\n"
                                             "x scale min 0 max 0 current 0 step 0\n"
                                             "y scale min 0 max 0 current 0 step 0\n"
                                             "z scale min 0 max 0 current 2 step 0");
}

TEST(FltNodeInfos, tellOfASwitchItsMasksAndTheirNames)
{
    FltVisualSwitch choice;
    choice.currentMask = 1;
    choice.wordsPerMask = 2;
    choice.masks = {1, 2, 3, 4};
    choice.maskNames = {"", "windy"};
    EXPECT_EQ(FltNodeInfos::describe(choice),
              "currentMask 1\nwordsPerMask 2\nmask 1 2\nmask 3 4\nmaskName 1 windy");
}

TEST(FltNodeInfos, tellTheSignificantSizeOfALevel)
{
    EXPECT_EQ(FltNodeInfos::describe(FltVisualLevel{12.5}), "significantSize 12.500000");
}

TEST(FltNodeInfos, tellOfAnOffsetAsManyDigitsAsItHas)
{
    double const offset[3] = {0.1, -4500000.125, 0};
    EXPECT_EQ(FltNodeInfos::describeOffset(offset), "offset 0.10000000000000001 -4500000.125 0");
}
