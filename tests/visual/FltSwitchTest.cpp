#include "visual/FltSwitch.h"

#include <gtest/gtest.h>

namespace
{

FltSwitch twoMasksOfTwoWords()
{
    FltSwitch choice;
    choice.wordsPerMask = 2;
    choice.masks = {1, 0x80000000, 2, 1};
    return choice;
}

} // namespace

TEST(FltSwitch, countsWholeMasks)
{
    FltSwitch choice = twoMasksOfTwoWords();
    EXPECT_EQ(choice.getMaskCount(), 2);
    choice.masks.pop_back();
    EXPECT_EQ(choice.getMaskCount(), 1);
    choice.wordsPerMask = 0;
    EXPECT_EQ(choice.getMaskCount(), 0);
}

TEST(FltSwitch, showsTheChildrenWhoseBitsAreSet)
{
    FltSwitch const choice = twoMasksOfTwoWords();
    EXPECT_TRUE(choice.shows(0, 0));
    EXPECT_FALSE(choice.shows(0, 1));
    EXPECT_FALSE(choice.shows(0, 31));
    EXPECT_FALSE(choice.shows(0, 32));
    EXPECT_TRUE(choice.shows(0, 63));
    EXPECT_TRUE(choice.shows(1, 1));
    EXPECT_TRUE(choice.shows(1, 32));
}

TEST(FltSwitch, showsNothingForMasksAndChildrenThatArentThere)
{
    FltSwitch const choice = twoMasksOfTwoWords();
    EXPECT_FALSE(choice.shows(-1, 0));
    EXPECT_FALSE(choice.shows(2, 0));
    EXPECT_FALSE(choice.shows(0, 64));
    EXPECT_FALSE(FltSwitch().shows(0, 0));
}

TEST(FltSwitch, takesNoWordOfAnotherMaskNorOneBehindTheLast)
{
    FltSwitch choice;
    choice.wordsPerMask = 1;
    choice.masks = {0, ~0U, ~0U};
    choice.masks.pop_back();
    EXPECT_FALSE(choice.shows(0, 32));
    EXPECT_TRUE(choice.shows(1, 31));
    EXPECT_FALSE(choice.shows(2, 0));
}
