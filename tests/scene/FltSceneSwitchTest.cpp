#include "scene/FltSceneSwitch.h"

#include <gtest/gtest.h>

namespace
{

FltSceneSwitch twoDoors()
{
    FltSceneSwitch choice;
    choice.wordsPerMask = 1;
    choice.masks = {1, 2};
    for (int i = 0; i < 2; ++i)
        choice.doors.emplace_back(new SoSwitch);
    return choice;
}

} // namespace

TEST(FltSceneSwitch, opensTheDoorsOfAMask)
{
    FltSceneSwitch choice = twoDoors();
    EXPECT_TRUE(choice.choose(1));
    EXPECT_EQ(choice.currentMask, 1);
    EXPECT_EQ(choice.doors[0]->whichChild.getValue(), SO_SWITCH_NONE);
    EXPECT_EQ(choice.doors[1]->whichChild.getValue(), SO_SWITCH_ALL);
    EXPECT_TRUE(choice.choose(0));
    EXPECT_EQ(choice.doors[0]->whichChild.getValue(), SO_SWITCH_ALL);
    EXPECT_EQ(choice.doors[1]->whichChild.getValue(), SO_SWITCH_NONE);
}

TEST(FltSceneSwitch, opensTheSameDoorsOfBothItsNodes)
{
    SoNodeRef<SoSwitch> const node(new SoSwitch), inAMirror(new SoSwitch);
    FltSceneSwitch choice = twoDoors();
    for (int i = 0; i < 2; ++i)
        choice.doors.emplace_back(new SoSwitch);
    choice.nodes = {node.get(), inAMirror.get()};
    EXPECT_TRUE(choice.choose(1));
    for (std::size_t const door : {std::size_t{0}, std::size_t{2}})
        EXPECT_EQ(choice.doors[door]->whichChild.getValue(), SO_SWITCH_NONE) << door;
    for (std::size_t const door : {std::size_t{1}, std::size_t{3}})
        EXPECT_EQ(choice.doors[door]->whichChild.getValue(), SO_SWITCH_ALL) << door;
}

TEST(FltSceneSwitch, staysAsItIsForAMaskThatIsntThere)
{
    FltSceneSwitch choice = twoDoors();
    choice.choose(1);
    EXPECT_FALSE(choice.choose(2));
    EXPECT_FALSE(choice.choose(-1));
    EXPECT_EQ(choice.currentMask, 1);
    EXPECT_EQ(choice.doors[1]->whichChild.getValue(), SO_SWITCH_ALL);
}
