#include "visual/FltVisualControls.h"

#include <gtest/gtest.h>

namespace
{

std::shared_ptr<FltVisualNode> jointWith(std::size_t number)
{
    auto node = std::make_shared<FltVisualNode>();
    node->become<FltVisualJoint>().number = number;
    return node;
}

TEST(FltVisualControls, listsEachPartOnceByItsNumber)
{
    auto const shared = jointWith(1);
    auto const choice = std::make_shared<FltVisualNode>();
    choice->become<FltVisualSwitch>().name = "lights";
    choice->children = {nullptr, shared, jointWith(0)};
    FltVisualNode root;
    root.children = {jointWith(2), shared, choice};

    FltVisualControls const controls(root);
    ASSERT_EQ(controls.joints.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(controls.joints[i]->number, i);
    ASSERT_EQ(controls.switches.size(), 1U);
    EXPECT_EQ(controls.switches[0]->name, "lights");
}

TEST(FltVisualControls, listsFlipBooksByTheirNumbers)
{
    FltVisualNode root;
    for (std::size_t const number : {1U, 0U}) {
        root.children.push_back(std::make_shared<FltVisualNode>());
        root.children.back()->become<FltVisualFlipBook>().number = number;
    }
    FltVisualControls const controls(root);
    ASSERT_EQ(controls.flipBooks.size(), 2U);
    EXPECT_EQ(controls.flipBooks[0]->number, 0U);
    EXPECT_EQ(controls.flipBooks[1]->number, 1U);
}

TEST(FltVisualControls, aSharedPartIsGoneThroughOnceHoweverOftenItStands)
{
    auto part = jointWith(0);
    for (int level = 0; level < 200; ++level) {
        auto twice = std::make_shared<FltVisualNode>();
        twice->children = {part, part};
        part = std::move(twice);
    }
    EXPECT_EQ(FltVisualControls(*part).joints.size(), 1U);
}

} // namespace
