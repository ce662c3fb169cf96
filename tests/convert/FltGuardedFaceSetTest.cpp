#include "convert/FltGuardedFaceSet.h"

#include "support/DrawnScene.h"
#include "support/SceneText.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/details/SoPointDetail.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

namespace
{

/// Two triangles, and between them faces of no, one and two vertices.
std::vector<int> const indices = {0, 1, 2, -1, -1, 1, -1, 2, 3, -1, 1, 3, 2, -1};

template <class FaceSet>
SoSeparator* sceneOf(std::vector<int> const& corners = indices)
{
    auto* const root = new SoSeparator;
    auto* const faces = new FaceSet;
    auto* const property = new SoVertexProperty;
    float const places[][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    property->vertex.setValues(0, 4, places);
    faces->vertexProperty = property;
    faces->coordIndex.setValues(0, static_cast<int>(corners.size()), corners.data());
    root->addChild(faces);
    root->ref();
    return root;
}

} // namespace

TEST(FltGuardedFaceSet, isNeededWhereAFaceHasFewerThanThreeVertices)
{
    EXPECT_TRUE(FltGuardedFaceSet::isNeededFor(indices));
    EXPECT_TRUE(FltGuardedFaceSet::isNeededFor({0, 1, 2, -1, 3, -1}));
    EXPECT_FALSE(FltGuardedFaceSet::isNeededFor({0, 1, 2, -1, 3, 2, 1, 0, -1}));
    EXPECT_FALSE(FltGuardedFaceSet::isNeededFor({}));
}

TEST(FltGuardedFaceSet, drawsAndCountsAllOtherFaces)
{
    SoSeparator* const plain = sceneOf<SoIndexedFaceSet>();
    SoSeparator* const guarded = sceneOf<FltGuardedFaceSet>();
    EXPECT_LT(DrawnScene(plain).area(), 0.75);
    EXPECT_NEAR(DrawnScene(guarded).area(), 1, 1e-6);
    SoGetPrimitiveCountAction count;
    count.apply(guarded);
    EXPECT_GE(count.getTriangleCount(), 2);
    plain->unref();
    guarded->unref();
}

TEST(FltGuardedFaceSet, drawsTheFacesAfterAFirstOneWithoutAVertex)
{
    SoSeparator* const root = sceneOf<FltGuardedFaceSet>({-1, 0, 1, 2, -1, 1, 3, 2, -1});
    EXPECT_NEAR(DrawnScene(root).area(), 1, 1e-6);
    root->unref();
}

TEST(FltGuardedFaceSet, isWrittenAsAnyFaceSet)
{
    SoSeparator* const plain = sceneOf<SoIndexedFaceSet>();
    SoSeparator* const guarded = sceneOf<FltGuardedFaceSet>();
    DrawnScene const drawn(guarded);
    EXPECT_EQ(sceneText(guarded), sceneText(plain));
    plain->unref();
    guarded->unref();
}

TEST(FltGuardedFaceSet, followsItsFieldsAndKeepsItsGuardWhenItIsCopied)
{
    SoSeparator* const root = sceneOf<FltGuardedFaceSet>();
    EXPECT_NEAR(DrawnScene(root).area(), 1, 1e-6);
    SoNode* const copy = root->copy();
    copy->ref();
    EXPECT_NEAR(DrawnScene(copy).area(), 1, 1e-6);
    auto* const faces = static_cast<SoIndexedFaceSet*>(root->getChild(0));
    faces->coordIndex.setNum(10);
    EXPECT_NEAR(DrawnScene(root).area(), 0.5, 1e-6);
    EXPECT_NEAR(DrawnScene(copy).area(), 1, 1e-6);
    copy->unref();
    root->unref();
}

TEST(FltGuardedFaceSet, saysWhatWasPickedOfIt)
{
    SoSeparator* const root = sceneOf<FltGuardedFaceSet>();
    SoRayPickAction pick{SbViewportRegion(100, 100)};
    pick.setRay(SbVec3f(0.75F, 0.75F, 10), SbVec3f(0, 0, -1));
    pick.apply(root);
    SoPickedPoint const* const point = pick.getPickedPoint();
    ASSERT_NE(point, nullptr);
    EXPECT_EQ(point->getPath()->getTail(), root->getChild(0));
    auto const* const detail = static_cast<SoFaceDetail const*>(point->getDetail(root->getChild(0)));
    ASSERT_NE(detail, nullptr);
    EXPECT_EQ(point->getDetail(), detail);
    EXPECT_EQ(detail->getFaceIndex(), 4) << "the faces without an area count";
    ASSERT_EQ(detail->getNumPoints(), 3);
    EXPECT_EQ(detail->getPoint(0)->getCoordinateIndex(), 1);
    EXPECT_EQ(detail->getPoint(1)->getCoordinateIndex(), 3);
    EXPECT_EQ(detail->getPoint(2)->getCoordinateIndex(), 2);
    root->unref();
}
