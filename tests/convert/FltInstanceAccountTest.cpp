#include "convert/FltInstanceAccount.h"

#include "convert/FltAllowances.h"
#include "convert/FltOneTimeWarnings.h"
#include "messages/FltLimits.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>
#include <iostream>

namespace
{

class FltInstanceAccountTest : public testing::Test
{
protected:
    StreamCapture const err{std::cerr};
    FltOneTimeWarnings warnings;
    FltAllowances allowances;
    FltInstanceAccount account{warnings, allowances};
};

TEST_F(FltInstanceAccountTest, NodesAndPlacesThatTheSceneCanBearAreEnteredInSilence)
{
    EXPECT_TRUE(account.addNode({0, 1}));
    FltInstanceAccount::Place const head = account.openScope({0, 1});
    EXPECT_TRUE(account.addNode({head.scope, 1}));
    EXPECT_TRUE(account.place(head.scope, {0, 1}));
    EXPECT_EQ(account.getGraph().getNodes(), 4);
    EXPECT_EQ(account.getGraph().getDepth(), 2);
    EXPECT_EQ(err.str(), "");
}

TEST_F(FltInstanceAccountTest, EachReasonToRefuseIsReportedOnce)
{
    FltInstanceAccount::Place const head = account.openScope({0, 1});
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(account.place(head.scope, head));
    std::string const endless =
        "WARNING ! An instance holds a reference to itself, which is left out\n(Warning Level: 2)\n\n";
    EXPECT_EQ(err.str(), endless);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(account.addNode({0, FltLimits::sceneDepth + 1}));
    std::string const tooDeep = "WARNING ! The scene is more than 2000 nodes deep: what lies deeper is left "
                                "out\n(Warning Level: 2)\n\n";
    EXPECT_EQ(err.str(), endless + tooDeep);
}

TEST_F(FltInstanceAccountTest, ASceneThatInstancesMakeTooLargeIsReported)
{
    FltInstanceAccount::Place where{0, 1};
    bool fine = true;
    for (int level = 0; level < 100 && fine; ++level) {
        int const scope = account.openScope(where).scope;
        for (int copy = 0; copy < 3 && fine; ++copy)
            fine = account.place(scope, where);
        where = {scope, 1};
    }
    EXPECT_FALSE(fine);
    EXPECT_EQ(err.str(), "WARNING ! The instances of the file make a scene of more than 4000000 nodes: "
                         "further ones are left out\n(Warning Level: 2)\n\n");
}

TEST_F(FltInstanceAccountTest, TheHeadOfAScopeStaysIt)
{
    FltInstanceAccount::Place const head = account.openScope({0, 3});
    EXPECT_NE(head.scope, 0);
    EXPECT_EQ(head.depth, 0);
    FltInstanceAccount::Place const again = account.openScope(head);
    EXPECT_EQ(again.scope, head.scope);
    EXPECT_EQ(account.getGraph().depthOf(again), 3);
}

TEST_F(FltInstanceAccountTest, ANodeThatStandsNowhereHasAScopeThatNoTraversalMeets)
{
    FltInstanceAccount::Place const head = account.openUnattachedScope();
    EXPECT_TRUE(account.addNode({head.scope, 1}));
    EXPECT_EQ(account.getGraph().getNodes(), 1);
}

TEST_F(FltInstanceAccountTest, AFinishedPartCountsWithItsNodesAndItsDepth)
{
    int const scope = account.addFinishedScope({0, 3}, 2, 3);
    EXPECT_EQ(account.getGraph().getNodes(), 1 + 3);
    EXPECT_EQ(account.getGraph().getDepth(), 5);
    EXPECT_FALSE(account.place(scope, {0, FltLimits::sceneDepth - 1}));
}

TEST_F(FltInstanceAccountTest, AFinishedPartThatWasMadeForAnotherPlaceIsRefusedWhereItDoesNotFit)
{
    EXPECT_NE(account.placeFinished({0, 1}, 5, 100), std::nullopt);
    EXPECT_EQ(account.getGraph().getNodes(), 1 + 100);
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(account.placeFinished({0, FltLimits::sceneDepth}, 5, 100), std::nullopt);
    EXPECT_EQ(account.getGraph().getNodes(), 1 + 100);
    EXPECT_EQ(err.str(), "WARNING ! The scene is more than 2000 nodes deep: what lies deeper is left out\n"
                         "(Warning Level: 2)\n\n");
}

TEST_F(FltInstanceAccountTest, ADefinitionIsFoundByItsNumber)
{
    EXPECT_EQ(account.findDefinition(-7), nullptr);
    auto* const node = new SoSeparator;
    account.define(-7, node, 5);
    ASSERT_NE(account.findDefinition(-7), nullptr);
    EXPECT_EQ(account.findDefinition(-7)->node.get(), node);
    EXPECT_EQ(account.findDefinition(-7)->scope, 5);
    EXPECT_EQ(account.findDefinition(7), nullptr);
}

TEST_F(FltInstanceAccountTest, ADefinitionIsHeldUntilAnotherTakesItsNumber)
{
    SoNodeRef<SoNode> const first(new SoSeparator);
    account.define(1, first.get(), 5);
    EXPECT_EQ(first->getRefCount(), 2);
    account.define(1, new SoSeparator, 6);
    EXPECT_EQ(first->getRefCount(), 1);
    EXPECT_EQ(account.findDefinition(1)->scope, 6);
}

} // namespace
