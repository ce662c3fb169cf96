#include "scene/FltNodeNames.h"

#include <Inventor/nodes/SoInfo.h>
#include <gtest/gtest.h>

namespace
{

std::string nameOf(SoNodeRef<SoNode> const& node)
{
    return node->getName().getString();
}

SoNodeRef<SoNode> newNode()
{
    return SoNodeRef<SoNode>(new SoInfo);
}

} // namespace

TEST(FltNodeNames, namesNothingBeforeItIsTold)
{
    FltNodeNames names;
    SoNodeRef<SoNode> const first = newNode(), second = newNode(), nameless = newNode();
    names.add(first.get(), "first one");
    names.add(nameless.get(), "");
    names.add(second.get(), std::string(256, '2'));
    EXPECT_EQ(nameOf(first), "");
    names.give();
    EXPECT_EQ(nameOf(first), "first_one");
    EXPECT_EQ(nameOf(second), "_" + std::string(254, '2'));
    EXPECT_EQ(nameOf(nameless), "");
    EXPECT_EQ(first->getRefCount(), 1);
}

TEST(FltNodeNames, leavesOutThoseThatSeveralHaveIfOnlyUniqueOnesAreWanted)
{
    FltNodeNames names;
    SoNodeRef<SoNode> const one = newNode(), other = newNode(), alone = newNode();
    names.add(one.get(), "a tree"); // both become "a_tree"
    names.add(other.get(), "a.tree");
    names.add(alone.get(), "tower");
    names.give(FltVisualOptions::Names::unique);
    EXPECT_EQ(nameOf(one), "");
    EXPECT_EQ(nameOf(other), "");
    EXPECT_EQ(nameOf(alone), "tower");
    EXPECT_EQ(one->getRefCount(), 1);
}

TEST(FltNodeNames, givesNoneIfNoneAreWanted)
{
    FltNodeNames names;
    SoNodeRef<SoNode> const node = newNode();
    names.add(node.get(), "tower");
    names.give(FltVisualOptions::Names::none);
    EXPECT_EQ(nameOf(node), "");
    names.give();
    EXPECT_EQ(nameOf(node), "");
}
