#include "shot/CameraPlace.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbViewVolume.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

class CameraPlaceTest : public testing::Test
{
protected:
    /// Where the camera's picture shows a point: from 0 at the left and at the bottom to 1.
    SbVec3f seen(SbVec3f const& point, float aspect) const
    {
        SbViewVolume volume = camera->getViewVolume(aspect);
        if (aspect < 1)
            volume.scale(1 / aspect); // as it is when it is drawn
        SbVec3f place;
        volume.projectToScreen(point, place);
        return place;
    }

    SoNodeRef<SoPerspectiveCamera> const camera{new SoPerspectiveCamera};
    std::vector<SbVec3f> const points{{-3, 0, 0}, {5, 1, 0}, {0, 4, 2}, {1, -2, -6}};
};

} // namespace

TEST_F(CameraPlaceTest, fitsAllPointsTightly)
{
    for (float const aspect : {0.4f, 1.0f, 2.5f})
        for (float const azimuth : {0.0f, 77.0f, 200.0f}) {
            camera->orientation = CameraPlace::lookingFrom(azimuth, 30);
            CameraPlace::fit(*camera, points, aspect, 1);
            CameraPlace::includeDepth(*camera, points);
            float least = 1;
            for (SbVec3f const& point : points) {
                SbVec3f const place = seen(point, aspect);
                for (float const part : {place[0], 1 - place[0], place[1], 1 - place[1]}) {
                    EXPECT_GT(part, 0);
                    least = std::min(least, part);
                }
                EXPECT_GE(place[2], 0);
                EXPECT_LE(place[2], 1);
            }
            EXPECT_LT(least, 0.03f) << aspect << ' ' << azimuth;
        }
}

TEST_F(CameraPlaceTest, looksFromTheCompassDirection)
{
    SbVec3f forward;
    CameraPlace::lookingFrom(90, 0).multVec(SbVec3f(0, 0, -1), forward);
    EXPECT_TRUE(forward.equals(SbVec3f(-1, 0, 0), 1e-5f)) << "from the east to the west";
    CameraPlace::lookingFrom(0, 0).multVec(SbVec3f(0, 0, -1), forward);
    EXPECT_TRUE(forward.equals(SbVec3f(0, -1, 0), 1e-5f)) << "from the north to the south";
    CameraPlace::lookingFrom(180, 90).multVec(SbVec3f(0, 1, 0), forward);
    EXPECT_TRUE(forward.equals(SbVec3f(0, 1, 0), 1e-5f)) << "north at the top from above";
}

TEST_F(CameraPlaceTest, standsUprightAndLooksAtTheTarget)
{
    EXPECT_TRUE(CameraPlace::stand(*camera, {10, 0, 5}, {0, 0, 5}, 1));
    SbVec3f up;
    camera->orientation.getValue().multVec(SbVec3f(0, 1, 0), up);
    EXPECT_TRUE(up.equals(SbVec3f(0, 0, 1), 1e-5f));
    EXPECT_EQ(camera->focalDistance.getValue(), 10);
    EXPECT_TRUE(CameraPlace::stand(*camera, {0, 0, 5}, {0, 0, 0}, 1));
    camera->orientation.getValue().multVec(SbVec3f(0, 1, 0), up);
    EXPECT_TRUE(up.equals(SbVec3f(0, 1, 0), 1e-5f)) << "north, straight from above";
    EXPECT_FALSE(CameraPlace::stand(*camera, {1, 2, 3}, {1, 2, 3}, 1));
}

TEST_F(CameraPlaceTest, keepsTheDepthInOrderWhereverItStands)
{
    for (SbVec3f const& eye : {SbVec3f(0, 0, 0), SbVec3f(0, 0, 1000), SbVec3f(0, 0, -1000)}) {
        ASSERT_TRUE(CameraPlace::stand(*camera, eye, {0, 1, 2000}, 1));
        CameraPlace::includeDepth(*camera, points);
        EXPECT_GT(camera->nearDistance.getValue(), 0);
        EXPECT_GT(camera->farDistance.getValue(), camera->nearDistance.getValue());
    }
}
