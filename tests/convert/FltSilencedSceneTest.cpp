#include "convert/FltSilencedScene.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>
#include <Inventor/sensors/SoNodeSensor.h>
#include <gtest/gtest.h>

namespace
{

/// A root that somebody listens to.
class FltSilencedSceneTest : public testing::Test
{
protected:
    FltSilencedSceneTest()
    {
        root->ref();
        root->boundingBoxCaching = SoSeparator::ON;
        sensor.setPriority(0);
        sensor.attach(root);
    }
    ~FltSilencedSceneTest() override
    {
        sensor.detach();
        root->unref();
    }

    /// Adds a silenced group that remembers its box.
    SoSeparator* addGroup(SoSeparator* parent, FltSilencedScene::Order* order = nullptr)
    {
        auto* const group = new SoSeparator;
        group->boundingBoxCaching = SoSeparator::ON;
        FltSilencedScene::Order const own = scene.silence(group);
        if (order != nullptr)
            *order = own;
        parent->addChild(group);
        return group;
    }

    static void addCubeAt(SoSeparator* parent, float x)
    {
        auto* const place = new SoTranslation;
        place->translation.setValue(x, 0, 0);
        parent->addChild(place);
        parent->addChild(new SoCube);
    }

    static float centreOf(SoNode* node)
    {
        SoGetBoundingBoxAction action{SbViewportRegion()};
        action.apply(node);
        return action.getBoundingBox().getCenter()[0];
    }

    SoSeparator* root = new SoSeparator;
    int notifications = 0;
    SoNodeSensor sensor{[](void* count, SoSensor*) { ++*static_cast<int*>(count); }, &notifications};
    FltSilencedScene scene;
};

TEST_F(FltSilencedSceneTest, NodesAreNumberedInTheOrderInWhichTheyAreSilenced)
{
    EXPECT_EQ(scene.silence(root), 0U);
    FltSilencedScene::Order order = 0;
    addGroup(root, &order);
    EXPECT_EQ(order, 1U);
    addGroup(root, &order);
    EXPECT_EQ(order, 2U);
}

TEST_F(FltSilencedSceneTest, NobodyIsNotifiedUntilTheEnd)
{
    scene.silence(root);
    SoSeparator* const group = addGroup(root);
    for (int i = 0; i < 100; ++i)
        addGroup(group);
    EXPECT_EQ(notifications, 0);
}

TEST_F(FltSilencedSceneTest, AfterTheEndEveryNodeNotifiesAgain)
{
    scene.silence(root);
    SoSeparator* const group = addGroup(root);
    SoSeparator* const leaf = addGroup(group);
    scene.end();
    for (SoSeparator* node : {root, group, leaf}) {
        int const before = notifications;
        node->addChild(new SoCube);
        EXPECT_GT(notifications, before);
    }
}

TEST_F(FltSilencedSceneTest, WhatTheToolkitRemembersIsForgottenAtTheEnd)
{
    scene.silence(root);
    SoSeparator* const group = addGroup(root);
    addCubeAt(group, 10);
    EXPECT_EQ(centreOf(root), 10);
    addCubeAt(group, 10); // from the first one on
    scene.end();
    EXPECT_EQ(centreOf(root), 15);
}

TEST_F(FltSilencedSceneTest, ABoxIsForgottenForTheWholeSubtreeThatHoldsANode)
{
    scene.silence(root);
    FltSilencedScene::Order first = 0;
    SoSeparator* const outer = addGroup(root, &first);
    FltSilencedScene::Order order = 0;
    SoSeparator* const inner = addGroup(outer, &order);
    addCubeAt(inner, 10);
    ASSERT_EQ(centreOf(outer), 10);
    scene.noteBox(first);

    scene.forgetBox(order);
    addCubeAt(inner, 10);
    EXPECT_EQ(centreOf(outer), 15);
}

TEST_F(FltSilencedSceneTest, ABoxElsewhereIsKept)
{
    scene.silence(root);
    FltSilencedScene::Order first = 0;
    SoSeparator* const boxed = addGroup(root, &first);
    SoSeparator* const inner = addGroup(boxed);
    addCubeAt(inner, 10);
    ASSERT_EQ(centreOf(boxed), 10);
    scene.noteBox(first);
    FltSilencedScene::Order other = 0;
    addGroup(root, &other);

    addCubeAt(inner, 10);
    scene.forgetBox(0);     // before the boxed subtree
    scene.forgetBox(other); // after it
    EXPECT_EQ(centreOf(boxed), 10);
    scene.forgetBox(first);
    EXPECT_EQ(centreOf(boxed), 15);
}

TEST_F(FltSilencedSceneTest, OfSeveralBoxesTheOneAroundTheNodeIsForgotten)
{
    scene.silence(root);
    FltSilencedScene::Order orders[3] = {};
    SoSeparator* boxed[3] = {};
    SoSeparator* inner[3] = {};
    for (int i = 0; i < 3; ++i) {
        boxed[i] = addGroup(root, &orders[i]);
        inner[i] = addGroup(boxed[i]);
        addCubeAt(inner[i], 10);
        ASSERT_EQ(centreOf(boxed[i]), 10);
        scene.noteBox(orders[i]);
    }
    scene.forgetBox(orders[1] + 1);
    for (SoSeparator* group : inner)
        addCubeAt(group, 10);
    EXPECT_EQ(centreOf(boxed[0]), 10);
    EXPECT_EQ(centreOf(boxed[1]), 15);
    EXPECT_EQ(centreOf(boxed[2]), 10);
}

TEST_F(FltSilencedSceneTest, ABoxTakesTheBoxesWithinItIntoItself)
{
    scene.silence(root);
    FltSilencedScene::Order outerOrder = 0;
    FltSilencedScene::Order innerOrder = 0;
    SoSeparator* const outer = addGroup(root, &outerOrder);
    SoSeparator* const inner = addGroup(outer, &innerOrder);
    addCubeAt(inner, 10);
    ASSERT_EQ(centreOf(inner), 10);
    scene.noteBox(innerOrder);
    ASSERT_EQ(centreOf(outer), 10);
    scene.noteBox(outerOrder);

    scene.forgetBox(innerOrder);
    addCubeAt(inner, 10);
    EXPECT_EQ(centreOf(outer), 15);
}

TEST_F(FltSilencedSceneTest, ANodeThatIsNullIsPassedOver)
{
    scene.silence(nullptr);
    scene.silence(root);
    scene.end();
    EXPECT_TRUE(root->isNotifyEnabled());
}

} // namespace
