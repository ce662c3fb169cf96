#include "visual/FltNodeBuilder.h"

#include "messages/FltLimits.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <iostream>

namespace
{

FltMesh meshAt(float x)
{
    FltMesh mesh;
    mesh.positions = {SbVec3f(x, 0, 0), SbVec3f(x + 1, 1, 0)};
    return mesh;
}

FltVisualPart partAt(float x)
{
    FltNodeBuilder builder;
    builder.addMesh(meshAt(x));
    return builder.finish();
}

SbMatrix moveBy(float x)
{
    SbMatrix matrix;
    matrix.setTranslate(SbVec3f(x, 0, 0));
    return matrix;
}

SbBox3f boxFrom(float low, float high)
{
    return {SbVec3f(low, 0, 0), SbVec3f(high, 1, 0)};
}

} // namespace

TEST(FltNodeBuilder, countsTheBoxInTheTransformation)
{
    FltNodeBuilder builder;
    builder.addMatrix(moveBy(10));
    builder.add(partAt(0));
    builder.addMesh(meshAt(3));
    EXPECT_EQ(builder.getBox(), boxFrom(10, 14));
    EXPECT_EQ(builder->transform.size(), 1U);
    EXPECT_EQ(builder->children.size(), 1U);
    EXPECT_EQ(builder->meshes.size(), 1U);
}

TEST(FltNodeBuilder, letsTheMatrixThatIsAddedLastActFirst)
{
    SbMatrix doubling;
    doubling.setScale(2);
    FltNodeBuilder builder;
    builder.addMatrix(moveBy(10));
    builder.addMatrix(doubling);
    builder.addMesh(meshAt(1));
    EXPECT_EQ(builder.getBox(), SbBox3f(SbVec3f(12, 0, 0), SbVec3f(14, 2, 0)));
}

TEST(FltNodeBuilder, leavesHiddenMeshesOutOfTheBox)
{
    FltNodeBuilder builder;
    FltMesh hidden = meshAt(0);
    hidden.isHidden = true;
    builder.addMesh(std::move(hidden));
    EXPECT_TRUE(builder.getBox().isEmpty());
    EXPECT_EQ(builder->meshes.size(), 1U);
}

TEST(FltNodeBuilder, addsNothingForAPartWithoutANode)
{
    FltNodeBuilder builder;
    EXPECT_FALSE(builder.add({}));
    EXPECT_TRUE(builder->children.empty());
    builder.addPlace({});
    ASSERT_EQ(builder->children.size(), 1U);
    EXPECT_EQ(builder->children[0], nullptr);
}

TEST(FltNodeBuilder, addsUpWhatATraversalMeets)
{
    FltNodeBuilder builder;
    FltVisualPart part = partAt(0);
    part.visits = 7;
    part.depth = 3;
    builder.add(part);
    EXPECT_EQ(builder.finish().visits, 8);
    EXPECT_EQ(builder.finish().depth, 4);
    builder.addCopies(part, {moveBy(0), moveBy(1), moveBy(2)});
    EXPECT_EQ(builder.finish().visits, 8 + 1 + 7 + 2 * 8);
    EXPECT_EQ(builder.finish().depth, 5);
    builder.addPlace(part);
    EXPECT_EQ(builder.finish().visits, 32 + 8);
    EXPECT_EQ(builder.finish().depth, 5);
}

TEST(FltNodeBuilder, holdsAPartOnceForAllItsPlaces)
{
    FltNodeBuilder builder;
    builder.addCopies(partAt(0), {moveBy(0), moveBy(5)});
    ASSERT_EQ(builder->children.size(), 1U);
    FltVisualNode const& copies = *builder->children[0];
    ASSERT_NE(copies.as<FltVisualCopies>(), nullptr);
    EXPECT_EQ(copies.as<FltVisualCopies>()->places.size(), 2U);
    EXPECT_EQ(copies.children.size(), 1U);
    EXPECT_EQ(builder.getBox(), boxFrom(0, 6));
}

TEST(FltNodeBuilder, leavesOutAPartThatIsTooDeep)
{
    FltNodeBuilder builder;
    FltVisualPart part = partAt(0);
    part.depth = FltLimits::sceneDepth - 1;
    EXPECT_TRUE(builder.add(part));
    part.depth = FltLimits::sceneDepth;
    StreamCapture const err(std::cerr);
    EXPECT_FALSE(builder.add(part));
    EXPECT_NE(err.str().find("the scene would become too deep"), std::string::npos);
    EXPECT_EQ(builder->children.size(), 1U);
}
