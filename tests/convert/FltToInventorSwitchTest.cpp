#include "support/ConvertedScene.h"

#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>

TEST(FltToInventorSwitchTest, MaskFarBeyondTheListOfBitsDrawsNoChild)
{
    for (int const mask : {0x7ffffffe, 0x7fffffff, 1 << 30}) {
        FltWriter flt(1570);
        flt.push().add("Switch", {{"idASCII", "sw"},
                                  {"indexOfCurrentMask", mask},
                                  {"numberOfMasks", 1},
                                  {"numberOf32BitWordsPerMask", 0x7fffffff},
                                  {"masks", {0xffffffff}}});
        flt.push().add("Group", {{"idASCII", "child"}}).push().pop().pop().pop();
        ConvertedScene const scene(flt);
        auto const* const child = static_cast<SoSwitch*>(scene.find("child_of_sw_(flt_switch)"));
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(child->whichChild.getValue(), SO_SWITCH_NONE) << mask;
    }
}
