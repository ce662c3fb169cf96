#include "view/LevelsOfDetail.h"

#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

class LevelsOfDetailTest : public testing::Test
{
protected:
    LevelsOfDetailTest() : root(new SoSeparator), lod(new SoLOD)
    {
        root->ref();
        root->addChild(lod);
        for (int i = 0; i < 3; ++i)
            lod->addChild(new SoCube);
        lod->range.set1Value(0, 100);
        lod->range.set1Value(1, 5000);
    }
    ~LevelsOfDetailTest() override { root->unref(); }
    LevelsOfDetailTest(LevelsOfDetailTest const&) = delete;
    LevelsOfDetailTest& operator=(LevelsOfDetailTest const&) = delete;

    /// The child that the toolkit draws at a distance.
    int drawnAt(float distance) const
    {
        int child = 0;
        while (child < lod->range.getNum() && distance >= lod->range[child])
            ++child;
        return child;
    }

    SoSeparator* root;
    SoLOD* lod;
};

TEST_F(LevelsOfDetailTest, KnowsTheFarthestChange)
{
    EXPECT_EQ(5000, LevelsOfDetail(root).farthest());
}

TEST_F(LevelsOfDetailTest, DrawsTheChosenChildAtEveryDistance)
{
    LevelsOfDetail levels(root);
    for (int child = 0; child < 3; ++child) {
        levels.force(*lod, child);
        EXPECT_EQ(child, levels.forced(*lod));
        EXPECT_EQ(child, drawnAt(0));
        EXPECT_EQ(child, drawnAt(1e9f));
    }
}

TEST_F(LevelsOfDetailTest, DrawsAllAsFromOneDistance)
{
    LevelsOfDetail levels(root);
    levels.setDistance(300);
    EXPECT_EQ(1, drawnAt(0));
    levels.setDistance(5000);
    EXPECT_EQ(2, drawnAt(0));
    levels.setDistance(0);
    EXPECT_EQ(0, drawnAt(1e9f));
}

TEST_F(LevelsOfDetailTest, GivesTheDistancesOfTheFileBack)
{
    LevelsOfDetail levels(root);
    levels.setDistance(300);
    levels.followEye();
    EXPECT_EQ(-1, levels.forced(*lod));
    ASSERT_EQ(2, lod->range.getNum());
    EXPECT_EQ(100, lod->range[0]);
    EXPECT_EQ(5000, lod->range[1]);
}

TEST_F(LevelsOfDetailTest, DrawsAChildThatHasNoDistance)
{
    lod->range.setNum(0);
    LevelsOfDetail levels(root);
    levels.force(*lod, 2);
    EXPECT_EQ(2, drawnAt(0));
    levels.followEye();
    EXPECT_EQ(0, lod->range.getNum());
}

} // namespace
