#include "view/SectionPlane.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>
#include <memory>

namespace
{

/// A cube from -1 to 1, looked at along -z at places of x.
class SectionPlaneTest : public testing::Test
{
protected:
    SectionPlaneTest()
    {
        content->ref();
        content->addChild(new SoCube);
        section = std::make_unique<SectionPlane>(*content);
        section->setBox(SbBox3f(-1, -1, -1, 1, 1, 1));
    }
    ~SectionPlaneTest() override
    {
        section.reset();
        content->unref();
    }

    bool isSeenAt(float x) const
    {
        SoRayPickAction action(SbViewportRegion(100, 100));
        action.setRay(SbVec3f(x, 0, 5), SbVec3f(0, 0, -1));
        action.apply(content);
        return action.getPickedPoint() != nullptr;
    }

    SoSeparator* content = new SoSeparator;
    std::unique_ptr<SectionPlane> section;
};

TEST_F(SectionPlaneTest, CutsNothingAtFirst)
{
    EXPECT_TRUE(isSeenAt(-0.9f));
    EXPECT_TRUE(isSeenAt(0.9f));
}

TEST_F(SectionPlaneTest, LeavesOutWhatLiesBeyondAPlaneAcrossAnAxis)
{
    section->cut(SectionPlane::Axis::x, 0.75, false);
    EXPECT_TRUE(isSeenAt(0.4f));
    EXPECT_FALSE(isSeenAt(0.6f));
    section->cut(SectionPlane::Axis::x, 0.75, true);
    EXPECT_FALSE(isSeenAt(0.4f));
    EXPECT_TRUE(isSeenAt(0.6f));
    section->release();
    EXPECT_TRUE(isSeenAt(0.4f));
}

TEST_F(SectionPlaneTest, CutsNothingOfAnEmptyModel)
{
    section->setBox(SbBox3f());
    section->cut(SectionPlane::Axis::x, 0.5, false);
    EXPECT_TRUE(isSeenAt(0.9f));
}

} // namespace
