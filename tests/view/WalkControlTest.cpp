#include "view/WalkControl.h"

#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <QKeyEvent>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

constexpr float size = 100; // of the model: a step is 1

/// A camera that looks along y, z up, and a little down.
class WalkControlTest : public testing::Test
{
protected:
    WalkControlTest()
    {
        camera->ref();
        camera->position = SbVec3f(0, 0, 2);
        camera->orientation = SbRotation(SbVec3f(1, 0, 0), static_cast<float>(M_PI / 2) - 0.3f);
    }
    ~WalkControlTest() override { camera->unref(); }

    bool press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        return WalkControl::takeKey(QKeyEvent(QEvent::KeyPress, key, modifiers), *camera, size);
    }

    void expectAt(float x, float y, float z) const
    {
        EXPECT_LT((camera->position.getValue() - SbVec3f(x, y, z)).length(), 1e-4f)
            << camera->position.getValue()[0] << " " << camera->position.getValue()[1] << " "
            << camera->position.getValue()[2];
    }

    SoPerspectiveCamera* camera = new SoPerspectiveCamera;
};

TEST_F(WalkControlTest, GoesOverTheGroundEvenWhenLookingDown)
{
    EXPECT_TRUE(press(Qt::Key_W));
    expectAt(0, 1, 2);
    EXPECT_TRUE(press(Qt::Key_D));
    expectAt(1, 1, 2);
    EXPECT_TRUE(press(Qt::Key_S));
    EXPECT_TRUE(press(Qt::Key_A));
    expectAt(0, 0, 2);
    EXPECT_TRUE(press(Qt::Key_E));
    expectAt(0, 0, 3);
    EXPECT_TRUE(press(Qt::Key_Q));
    expectAt(0, 0, 2);
}

TEST_F(WalkControlTest, GoesFasterWithShift)
{
    EXPECT_TRUE(press(Qt::Key_W, Qt::ShiftModifier));
    expectAt(0, 5, 2);
}

TEST_F(WalkControlTest, LeavesOtherKeysToOthers)
{
    EXPECT_FALSE(press(Qt::Key_X));
    expectAt(0, 0, 2);
}

TEST_F(WalkControlTest, LooksAroundWithoutLeaningOver)
{
    WalkControl::look(QPoint(300, 40), *camera);
    SbVec3f right;
    camera->orientation.getValue().multVec(SbVec3f(1, 0, 0), right);
    EXPECT_NEAR(0, right[2], 1e-5f);
    for (int i = 0; i < 50; ++i)
        WalkControl::look(QPoint(0, 40), *camera);
    SbVec3f ahead, up;
    camera->orientation.getValue().multVec(SbVec3f(0, 0, -1), ahead);
    camera->orientation.getValue().multVec(SbVec3f(0, 1, 0), up);
    EXPECT_LT(ahead[2], -0.5f);
    EXPECT_GT(up[2], 0) << "it stops before it looks backwards";
}

} // namespace
