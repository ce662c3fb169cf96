#include "convert/FltInstanceGraph.h"

#include "convert/FltAllowances.h"
#include "messages/FltLimits.h"

#include <gtest/gtest.h>

namespace
{

using Answer = FltInstanceGraph::Answer;

class FltInstanceGraphTest : public testing::Test
{
protected:
    FltAllowances allowances;
    FltInstanceGraph graph{allowances};
};

TEST_F(FltInstanceGraphTest, CountsTheNodesOfTheSceneAndItsDepth)
{
    EXPECT_EQ(graph.addNodes({0, 1}), Answer::fine);
    EXPECT_EQ(graph.addNodes({0, 2}, 3), Answer::fine);
    EXPECT_EQ(graph.getNodes(), 5);
    EXPECT_EQ(graph.getDepth(), 2);
}

TEST_F(FltInstanceGraphTest, ASharedScopeCountsOnceForEachPlace)
{
    graph.addNodes({0, 1});
    int const tree = graph.addScope({0, 1});
    graph.addNodes({tree, 1}, 9);
    EXPECT_EQ(graph.getNodes(), 11);
    EXPECT_EQ(graph.place(tree, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.getNodes(), 11 + 9);
    graph.addNodes({tree, 1}); // grows in both places
    EXPECT_EQ(graph.getNodes(), 11 + 9 + 2);
}

TEST_F(FltInstanceGraphTest, PlacingTakesAStepForEachScopeOnTheWay)
{
    int const row = graph.addScope({0, 1});
    for (int i = 0; i < 3; ++i)
        graph.addScope({row, 1});
    allowances.instanceCheckSteps = FltAllowance({8, 0});
    EXPECT_EQ(graph.place(row, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.place(row, {0, 1}), Answer::fine) << "the eighth step is allowed";
    EXPECT_EQ(graph.place(row, {0, 1}), Answer::tooLarge);
}

TEST_F(FltInstanceGraphTest, PlacingFillsASceneToItsLastNode)
{
    int const lamp = graph.addScope({0, 1});
    std::int64_t const before = graph.getNodes();
    allowances.sceneNodes = FltAllowance({before + 2, 0});
    EXPECT_EQ(graph.place(lamp, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.place(lamp, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.place(lamp, {0, 1}), Answer::tooLarge);
    EXPECT_EQ(graph.getNodes(), before + 2);
}

TEST_F(FltInstanceGraphTest, AScopeCannotStandInItself)
{
    int const scope = graph.addScope({0, 1});
    EXPECT_EQ(graph.place(scope, {scope, 1}), Answer::endless);
}

TEST_F(FltInstanceGraphTest, AScopeCannotStandInOneThatItHolds)
{
    int const outer = graph.addScope({0, 1});
    int const inner = graph.addScope({outer, 1});
    int const innermost = graph.addScope({inner, 1});
    EXPECT_EQ(graph.place(outer, {innermost, 1}), Answer::endless);
    EXPECT_EQ(graph.place(innermost, {outer, 1}), Answer::fine);
}

TEST_F(FltInstanceGraphTest, AScopeCannotStandInOneThatHoldsItByAnotherPlace)
{
    int const first = graph.addScope({0, 1});
    int const second = graph.addScope({0, 1});
    EXPECT_EQ(graph.place(first, {second, 1}), Answer::fine);
    EXPECT_EQ(graph.place(second, {first, 1}), Answer::endless);
}

TEST_F(FltInstanceGraphTest, NodesBelowTheDeepestPlaceAreRefused)
{
    EXPECT_EQ(graph.addNodes({0, FltLimits::sceneDepth}), Answer::fine);
    EXPECT_EQ(graph.addNodes({0, FltLimits::sceneDepth + 1}), Answer::tooDeep);
}

TEST_F(FltInstanceGraphTest, AChainOfScopesIsNoDeeperThanAScene)
{
    int below = graph.addUnattachedScope();
    graph.addNodes({below, 900});
    int above = graph.addUnattachedScope();
    EXPECT_EQ(graph.place(below, {above, 900}), Answer::fine);
    EXPECT_EQ(graph.place(above, {0, FltLimits::sceneDepth - 1800 + 1}), Answer::tooDeep);
    EXPECT_EQ(graph.place(above, {0, FltLimits::sceneDepth - 1800}), Answer::fine);
}

TEST_F(FltInstanceGraphTest, ADeeplyPlacedScopeMayNotGrowDeeperThanTheScene)
{
    int const scope = graph.addScope({0, 1});
    EXPECT_EQ(graph.place(scope, {0, FltLimits::sceneDepth - 10}), Answer::fine);
    EXPECT_EQ(graph.addNodes({scope, 10}), Answer::fine);
    EXPECT_EQ(graph.addNodes({scope, 11}), Answer::tooDeep);
}

TEST_F(FltInstanceGraphTest, ScopesThatDoubleAtEachLevelAreRefusedBeforeTheSceneIsTooLarge)
{
    int scope = graph.addUnattachedScope();
    Answer answer = Answer::fine;
    int levels = 0;
    for (; answer == Answer::fine && levels < 100; ++levels) {
        int const next = graph.addUnattachedScope();
        graph.place(scope, {next, 1});
        answer = graph.place(scope, {next, 1});
        scope = next;
    }
    EXPECT_EQ(answer, Answer::tooLarge);
    EXPECT_LT(levels, 40);
}

TEST_F(FltInstanceGraphTest, ScopesThatAreMultipliedBeforeTheyGrowAreRefusedToo)
{
    FltInstanceGraph::Place head{0, 1};
    Answer answer = Answer::fine;
    for (int level = 0; level < 100 && answer == Answer::fine; ++level) {
        int const scope = graph.addScope(head);
        for (int copy = 0; copy < 3 && answer == Answer::fine; ++copy)
            answer = graph.place(scope, head);
        head = {scope, 1};
    }
    EXPECT_EQ(answer, Answer::tooLarge);
    EXPECT_LE(graph.getNodes(), FltLimits::sceneNodes.floor);
}

TEST_F(FltInstanceGraphTest, APartOfAnotherSceneBeginsAtItsDepth)
{
    FltInstanceGraph part(allowances, {FltLimits::sceneDepth - 5, 0, 1});
    EXPECT_EQ(part.addNodes({0, 5}), Answer::fine);
    EXPECT_EQ(part.addNodes({0, 6}), Answer::tooDeep);
    EXPECT_EQ(part.getDepth(), 5);

    FltInstanceGraph whole(allowances);
    int const scope = whole.addFinishedScope({0, 3}, 5, 100);
    EXPECT_EQ(whole.getDepth(), 8);
    EXPECT_EQ(whole.getNodes(), 101);
    EXPECT_EQ(whole.place(scope, {0, FltLimits::sceneDepth - 4}), Answer::tooDeep);
}

TEST_F(FltInstanceGraphTest, ASceneMayBeLargerTheMoreBytesWereRead)
{
    int const scope = graph.addScope({0, 1});
    graph.addNodes({scope, 1}, FltLimits::sceneNodes.floor / 2);
    EXPECT_EQ(graph.place(scope, {0, 1}), Answer::tooLarge);
    allowances.growBy(FltLimits::sceneNodes.floor / FltLimits::sceneNodes.perByte);
    EXPECT_EQ(graph.place(scope, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.place(scope, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.place(scope, {0, 1}), Answer::tooLarge);
}

TEST_F(FltInstanceGraphTest, APartIsMeasuredWithAllThatStandsAroundItAndForEachOfItsPlaces)
{
    std::int64_t const most = FltLimits::sceneNodes.floor;
    FltInstanceGraph part(allowances, {0, most - 1000, 10});
    int const scope = part.addScope({0, 1});
    EXPECT_EQ(part.addNodes({scope, 1}, 50), Answer::fine);
    EXPECT_EQ(part.place(scope, {0, 1}), Answer::tooLarge);

    int const outer = graph.addScope({0, 1});
    graph.addNodes({outer, 1}, 7);
    graph.place(outer, {0, 1});
    FltInstanceGraph::Surroundings const around = graph.surroundingsOf({outer, 1});
    EXPECT_EQ(around.depth, 2);
    EXPECT_EQ(around.occurrences, 2);
    EXPECT_EQ(around.nodes, graph.getNodes());
}

TEST_F(FltInstanceGraphTest, AFinishedPartIsCheckedBeforeItIsPlaced)
{
    EXPECT_EQ(graph.checkFinished({0, 1}, 5, 100), Answer::fine);
    EXPECT_EQ(graph.checkFinished({0, FltLimits::sceneDepth}, 5, 100), Answer::tooDeep);
    EXPECT_EQ(graph.checkFinished({0, 1}, 5, FltLimits::sceneNodes.floor), Answer::tooLarge);
    EXPECT_EQ(graph.getNodes(), 1);
}

} // namespace
