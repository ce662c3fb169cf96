#include "visual/FltLevelsAtDistance.h"

#include "support/MadeNodes.h"

#include <gtest/gtest.h>

namespace
{

using namespace MadeNodes;

Node levels(std::vector<Node> children, std::vector<double> const& distances,
            std::vector<bool> nextStays = {})
{
    Node made = named("levels", std::move(children));
    FltVisualLevels& content = made->become<FltVisualLevels>();
    content.distances = distances;
    content.nextStays = std::move(nextStays);
    return made;
}

/// The names below the levels of a root.
std::string namesAt(Node const& root, double distance)
{
    FltLevelsAtDistance chooser;
    std::string names;
    for (Node const& child : chooser.at(root, distance)->children.front()->children)
        names += child->name;
    return names;
}

} // namespace

TEST(FltLevelsAtDistance, areThoseThatADistanceIsIn)
{
    Node const root = named("root", {levels({named("a"), named("b"), nullptr}, {100, 200})});
    EXPECT_EQ(namesAt(root, 0), "a");
    EXPECT_EQ(namesAt(root, 99), "a");
    EXPECT_EQ(namesAt(root, 100), "b");
    EXPECT_EQ(namesAt(root, 200), "");
    EXPECT_NE(root->children.front()->as<FltVisualLevels>(), nullptr) << "the visual stays as it is";
}

TEST(FltLevelsAtDistance, areTheFinestAtZeroEvenIfTheyBeginFartherAway)
{
    Node const root = named("root", {levels({nullptr, named("b")}, {100})});
    EXPECT_EQ(namesAt(root, 0), "b");
    EXPECT_EQ(namesAt(root, 50), "");
}

TEST(FltLevelsAtDistance, stayWhereFinerOnesAreAddedToThem)
{
    Node const root =
        named("root", {levels({named("a"), named("b"), named("c")}, {100, 200}, {true, false, false})});
    EXPECT_EQ(namesAt(root, 0), "ba") << "the coarser is drawn first";
    EXPECT_EQ(namesAt(root, 150), "b");
    EXPECT_EQ(namesAt(root, 250), "c");
}

TEST(FltLevelsAtDistance, keepWhatHasNoLevels)
{
    Node const plain = named("plain", {named("child")});
    Node const joint = named("joint", {levels({named("a")}, {})});
    joint->become<FltVisualJoint>().number = 7;
    FltLevelsAtDistance chooser;
    Node const chosen = chooser.at(named("root", {plain, joint, joint}), 0);
    EXPECT_EQ(chosen->children[0], plain);
    EXPECT_EQ(chosen->children[1]->as<FltVisualJoint>()->number, 7U);
    EXPECT_EQ(chosen->children[1], chosen->children[2]) << "what is shared is shared";
    EXPECT_EQ(chooser.at(nullptr, 0), nullptr);
}

TEST(FltLevelsAtDistance, changeWhereTheTopChanges)
{
    Node const deeper = levels({named("a"), named("b")}, {50});
    Node const hidden = levels({named("a"), named("b")}, {60});
    hidden->isHidden = true;
    Node const root = named("root", {levels({deeper, nullptr}, {300}), hidden, nullptr,
                                     named("g", {levels({named("c"), named("d"), named("e")}, {100, 300})})});
    EXPECT_EQ(FltLevelsAtDistance::changesOf(*root), (std::vector<double>{100, 300}));
}
