#include "shot/DrawnPoints.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

SoVertexProperty* places(std::vector<SbVec3f> const& list)
{
    auto* const property = new SoVertexProperty;
    property->vertex.setValues(0, static_cast<int>(list.size()), list.data());
    return property;
}

SoIndexedFaceSet* faceSet(std::vector<SbVec3f> const& list, std::vector<int32_t> const& indices)
{
    auto* const faces = new SoIndexedFaceSet;
    faces->vertexProperty = places(list);
    faces->coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    return faces;
}

class DrawnPointsTest : public testing::Test
{
protected:
    SoNodeRef<SoSeparator> const scene{new SoSeparator};
};

} // namespace

TEST_F(DrawnPointsTest, areThoseThatFacesUse)
{
    auto* const move = new SoTranslation;
    move->translation.setValue(10, 0, 0);
    scene->addChild(move);
    scene->addChild(
        faceSet({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {99, 0, 0}, {HUGE_VALF, 0, 0}}, {0, 1, 2, -1, 4, 7}));
    std::vector<SbVec3f> const points = DrawnPoints::of(scene.get());
    EXPECT_EQ(points, (std::vector<SbVec3f>{{10, 0, 0}, {11, 0, 0}, {11, 1, 0}}));
}

TEST_F(DrawnPointsTest, areThoseOfPointSetsAndOtherShapesToo)
{
    auto* const lights = new SoPointSet;
    lights->vertexProperty = places({{3, 0, 0}, {4, 0, 0}});
    scene->addChild(lights);
    EXPECT_EQ(DrawnPoints::of(scene.get()).size(), 2U);
    scene->addChild(new SoCube);
    EXPECT_EQ(DrawnPoints::of(scene.get()).size(), 10U) << "the corners of its box";
}

TEST_F(DrawnPointsTest, areAtAllLevelsOfDetailAndBehindNoClosedSwitch)
{
    auto* const lod = new SoLOD;
    lod->range = 5;
    for (float const x : {1.0f, 2.0f})
        lod->addChild(faceSet({{x, 0, 0}, {x, 1, 0}, {x, 0, 1}}, {0, 1, 2, -1}));
    scene->addChild(lod);
    auto* const closed = new SoSwitch;
    closed->addChild(faceSet({{9, 0, 0}, {9, 1, 0}, {9, 0, 1}}, {0, 1, 2, -1}));
    scene->addChild(closed);
    SbBox3f box;
    for (SbVec3f const& point : DrawnPoints::of(scene.get()))
        box.extendBy(point);
    EXPECT_EQ(box.getMin()[0], 1);
    EXPECT_EQ(box.getMax()[0], 2);
}
