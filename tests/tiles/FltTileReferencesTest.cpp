#include "tiles/FltTileReferences.h"

#include "support/MadeNodes.h"
#include "support/Moved.h"

#include <gtest/gtest.h>

namespace
{

using namespace MadeNodes;

Node file(std::string const& path)
{
    Node made = node();
    made->become<FltVisualFile>().path = path;
    return made;
}

/// The paths of the files in a node, in their order.
std::string pathsIn(Node const& root)
{
    std::string paths;
    for (auto const& [path, matrix] : FltTileReferences::in(root))
        paths += path + ' ';
    return paths;
}

} // namespace

TEST(FltTileReferences, areNoneInNothing)
{
    EXPECT_EQ(pathsIn(nullptr), "");
    EXPECT_EQ(pathsIn(node({node(), nullptr})), "");
}

TEST(FltTileReferences, areSoughtInASharedPartOnce)
{
    Node shared = node();
    for (int i = 0; i < 60; ++i) // with 2^60 ways down
        shared = node({shared, shared});
    EXPECT_EQ(pathsIn(shared), "");
    shared->children.push_back(file("a"));
    EXPECT_EQ(pathsIn(shared), "a ");
}

TEST(FltTileReferences, areThoseThatAreDrawn)
{
    Node const hidden = file("hidden");
    hidden->isHidden = true;
    Node const root = node({file("a"), nullptr, node({node(), hidden, node({file("b")})})});
    EXPECT_EQ(pathsIn(root), "a b ");
    root->isHidden = true;
    EXPECT_EQ(pathsIn(root), "");
}

TEST(FltTileReferences, areThoseThatASwitchShows)
{
    Node const root = node({file("a"), file("b"), file("c")});
    FltVisualSwitch& choice = root->become<FltVisualSwitch>();
    choice.masks = {0b010, 0b101};
    choice.wordsPerMask = 1;
    EXPECT_EQ(pathsIn(root), "b ");
    choice.currentMask = 1;
    EXPECT_EQ(pathsIn(root), "a c ");
    choice.masks = {0b010, 0};
    EXPECT_EQ(pathsIn(node({root})), "");
}

TEST(FltTileReferences, areThoseOfTheFirstPictureOfAFlipBook)
{
    Node const root = node({file("a"), file("b")});
    root->become<FltVisualFlipBook>();
    EXPECT_EQ(pathsIn(root), "a ");
}

TEST(FltTileReferences, standWhereAllMatricesAboveBringThem)
{
    Node const top = node();
    top->become<FltVisualScale>().factor = 10;
    Node const copies = node({file("tree")});
    copies->become<FltVisualCopies>().places = {moved(1, 0, 0), moved(0, 2, 0)};
    copies->transform = {moved(0, 0, 3)};
    copies->children[0]->transform = {moved(0.5, 0, 0)};
    top->children = {copies};
    auto const places = FltTileReferences::in(top);
    ASSERT_EQ(places.size(), 2U);
    for (std::size_t i = 0; i < places.size(); ++i) {
        SbVec3d place(0, 0, 1);
        places[i].second.multVecMatrix(place, place);
        EXPECT_EQ(place, i == 0 ? SbVec3d(15, 0, 40) : SbVec3d(5, 20, 40));
    }
}

TEST(FltTileReferences, areAMillionAtMost)
{
    Node const rows = node({node({file("tree")})});
    rows->become<FltVisualCopies>().places.assign(1001, SbDPMatrix::identity());
    rows->children[0]->become<FltVisualCopies>().places.assign(1000, SbDPMatrix::identity());
    EXPECT_EQ(FltTileReferences::in(rows).size(), 1'000'000U);
}
