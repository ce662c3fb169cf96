#include "complete/FltNodeNames.h"

#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoSeparator.h>
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

TEST(FltNodeNames, letsNodesGoThatAreLeftOutOfTheScene)
{
    FltNodeNames names;
    SoNodeRef<SoNode> const watched = newNode();
    SoNodeRef<SoNode> const kept = newNode();
    names.add(kept.get(), "kept");
    for (int i = 0; i < 20'000; ++i) {
        SoNodeRef<SoSeparator> const group(new SoSeparator);
        names.add(group.get(), "left_out");
        auto* const below = new SoSeparator;
        group->addChild(below);
        below->addChild(watched.get());
        names.add(below, "below_it");
    }
    EXPECT_LT(watched->getRefCount(), 1000);
    names.give();
    EXPECT_EQ(watched->getRefCount(), 1);
    EXPECT_EQ(nameOf(kept), "kept");
    EXPECT_EQ(SoNode::getByName("below_it"), nullptr);
}
