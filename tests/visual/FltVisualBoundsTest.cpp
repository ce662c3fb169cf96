#include "visual/FltVisualBounds.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

std::shared_ptr<FltVisualNode> cubeOf(float side)
{
    auto node = std::make_shared<FltVisualNode>();
    FltMesh mesh;
    mesh.positions = {{0, 0, 0}, {side, side, side}};
    mesh.origin = SbVec3d(1e7, 0, 0);
    node->meshes = {mesh};
    return node;
}

} // namespace

TEST(FltVisualBounds, AreThoseOfAllThatStandsInANode)
{
    FltVisualBounds bounds;
    auto const cube = cubeOf(2);
    EXPECT_NEAR(bounds.radiusOf(*cube), std::sqrt(3.0), 1e-6);
    FltVisualNode scaled;
    scaled.become<FltVisualScale>({10});
    scaled.children = {nullptr, cube};
    EXPECT_NEAR(bounds.radiusOf(scaled), 10 * std::sqrt(3.0), 1e-5);
    FltVisualNode copies;
    SbDPMatrix moved;
    moved.setTranslate(SbVec3d(0, 0, 98));
    copies.become<FltVisualCopies>({{SbDPMatrix::identity(), moved}});
    copies.children = {cube};
    EXPECT_NEAR(bounds.radiusOf(copies), std::sqrt(100.0 * 100 + 4 + 4) / 2, 1e-6);
}

TEST(FltVisualBounds, AreNoneOfWhatIsHiddenOrNotThere)
{
    FltVisualBounds bounds;
    EXPECT_EQ(bounds.radiusOf(FltVisualNode()), 0);
    FltVisualNode node;
    node.children = {cubeOf(2)};
    node.children[0]->isHidden = true;
    EXPECT_EQ(bounds.radiusOf(node), 0);
    EXPECT_EQ(FltVisualBounds().radiusOf(*cubeOf(std::numeric_limits<float>::infinity())), 0);
}
