#include "visual/FltNodeCopy.h"

#include <gtest/gtest.h>

TEST(FltNodeCopy, hasTheNamesOfAnotherNodeAndNothingInIt)
{
    FltVisualNode from;
    from.name = "tower";
    from.comments = {"high"};
    from.record = {12, 3};
    from.isHidden = true;
    from.meshes.resize(1);
    from.children.resize(1);
    auto const node = FltNodeCopy::namedLike(from);
    EXPECT_EQ(node->name, "tower");
    EXPECT_EQ(node->comments, std::vector<std::string>{"high"});
    EXPECT_EQ(node->record.offset, 12U);
    EXPECT_EQ(node->record.file, 3U);
    EXPECT_TRUE(node->isHidden);
    EXPECT_TRUE(node->meshes.empty());
    EXPECT_TRUE(node->children.empty());
}

TEST(FltNodeCopy, isWhatTheOtherNodeIsIfThatIsAskedFor)
{
    FltVisualNode from, node;
    from.become<FltVisualScale>({7});
    FltNodeCopy::takeContent<FltVisualSwitch, FltVisualJoint>(from, node);
    EXPECT_EQ(node.as<FltVisualScale>(), nullptr);
    FltNodeCopy::takeContent<FltVisualSwitch, FltVisualScale>(from, node);
    ASSERT_NE(node.as<FltVisualScale>(), nullptr);
    EXPECT_EQ(node.as<FltVisualScale>()->factor, 7);
}
