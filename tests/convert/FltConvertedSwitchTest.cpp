#include "convert/FltConvertedSwitch.h"

#include "records/FltRecordSwitch.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>
#include <iostream>

namespace
{

constexpr char noInfo[] = "ERROR ! SoInfo with switch properties not found\n(Warning Level: 3)\n\n";

class FltConvertedSwitchTest : public testing::Test
{
protected:
    FltConvertedSwitchTest() { group->ref(); }
    ~FltConvertedSwitchTest() override { group->unref(); }

    void addMasks(char const* text)
    {
        auto* const info = new SoInfo;
        info->setName("SoInfo_child_of_FLT_switch");
        info->string = text;
        group->addChild(info);
    }

    /// The answers for so many children in a row, as digits.
    std::string drawnChildren(int count)
    {
        std::string drawn;
        for (int i = 0; i < count; ++i) {
            drawn += converted.drawsNextChild(group) ? '1' : '0';
            group->addChild(new SoSwitch);
        }
        return drawn;
    }

    StreamCapture const err{std::cerr};
    SoSeparator* group = new SoSeparator;
    FltConvertedSwitch converted;
};

TEST_F(FltConvertedSwitchTest, TheNameAloneMarksASwitch)
{
    EXPECT_FALSE(FltConvertedSwitch::isMarked(group->getName().getString()));
    group->setName(FltConvertedSwitch::markedName("lamp").c_str());
    EXPECT_EQ(group->getName(), SbName("lamp_(flt_switch)"));
    EXPECT_TRUE(FltConvertedSwitch::isMarked(group->getName().getString()));
    group->setName("my_flt_switch_here");
    EXPECT_TRUE(FltConvertedSwitch::isMarked(group->getName().getString()));
}

TEST_F(FltConvertedSwitchTest, TheInfoNodeHoldsNumbersAndBitsInTheirOrder)
{
    FltRecordSwitch record(36);
    record.indexOfCurrentMask = 1;
    record.numberOfMasks = 2;
    record.numberOf32BitWordsPerMask = 1;
    record.maskWordCount = 2;
    record.masks.reset(new std::int32_t[2]{5, -1});
    auto* const info = new SoInfo;
    group->addChild(info);
    FltConvertedSwitch::fillInfo(*info, record);
    std::string five;
    std::string all;
    for (int bit = 31; bit >= 0; --bit) {
        five += bit == 2 || bit == 0 ? "1 " : "0 ";
        all += "1 ";
    }
    EXPECT_EQ(info->getName(), SbName("SoInfo_child_of_FLT_switch"));
    EXPECT_EQ(std::string(info->string.getValue().getString()),
              "Current Mask:1 NumberOfWordsPerMask:1 numberOfMasks:2 Switch Masks:" + five + "  " + all +
                  "  ");
}

TEST_F(FltConvertedSwitchTest, ChildrenTakeTheBitsOfTheCurrentMaskFromTheLowestOn)
{
    FltRecordSwitch record(36);
    record.indexOfCurrentMask = 1;
    record.numberOfMasks = 2;
    record.numberOf32BitWordsPerMask = 1;
    record.maskWordCount = 2;
    record.masks.reset(new std::int32_t[2]{0, 0x2d});
    auto* const info = new SoInfo;
    FltConvertedSwitch::fillInfo(*info, record);
    group->addChild(info);
    EXPECT_EQ(drawnChildren(8), "10110100");
}

TEST_F(FltConvertedSwitchTest, TheMasksAreReadOnce)
{
    addMasks("Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 Switch Masks:"
             "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 1   ");
    EXPECT_EQ(drawnChildren(1), "1");
    static_cast<SoInfo*>(group->getChild(0))->string = "";
    EXPECT_EQ(drawnChildren(3), "100");
    EXPECT_FALSE(FltConvertedSwitch().drawsNextChild(group));
}

/// A mask of no words begins where the numbers do.
TEST_F(FltConvertedSwitchTest, ThreeNumbersAreEnoughToBeReadAsAMask)
{
    addMasks("Current Mask:1 NumberOfWordsPerMask:0");
    EXPECT_EQ(drawnChildren(7), "0000010");
}

TEST_F(FltConvertedSwitchTest, OtherChildrenDoNotCount)
{
    addMasks("Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 Switch Masks:"
             "0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0   ");
    group->addChild(new SoSeparator);
    EXPECT_EQ(drawnChildren(1), "0");
    group->addChild(new SoSeparator);
    group->addChild(new SoInfo);
    EXPECT_EQ(FltConvertedSwitch::countChildren(group), 1);
    EXPECT_EQ(drawnChildren(1), "1");
    EXPECT_EQ(FltConvertedSwitch::countChildren(group), 2);
}

TEST_F(FltConvertedSwitchTest, NumbersThatLeadOutOfTheListDrawNothing)
{
    for (char const* text : {"", "1", "0 1 1", "2147483647 2147483647 2147483647", "0 2147483647 0"}) {
        group->removeAllChildren();
        addMasks(text);
        FltConvertedSwitch fresh;
        EXPECT_FALSE(fresh.drawsNextChild(group)) << text;
    }
}

TEST_F(FltConvertedSwitchTest, TheFirstInfoNodeOfTheRightNameIsFound)
{
    group->addChild(new SoInfo);
    addMasks("first");
    addMasks("second");
    EXPECT_EQ(FltConvertedSwitch::findInfo(group), group->getChild(1));
    EXPECT_EQ(err.str(), "");
}

TEST_F(FltConvertedSwitchTest, AGroupWithoutMasksIsReportedEachTimeAndDrawsNothing)
{
    EXPECT_EQ(FltConvertedSwitch::findInfo(group), nullptr);
    EXPECT_EQ(err.str(), noInfo);
    EXPECT_FALSE(converted.drawsNextChild(group));
    EXPECT_FALSE(converted.drawsNextChild(group));
    EXPECT_EQ(err.str(), std::string(noInfo) + noInfo + noInfo);
}

} // namespace
