#include "convert/FltInstanceGraph.h"

#include "messages/FltLimits.h"

#include <gtest/gtest.h>

namespace
{

using Answer = FltInstanceGraph::Answer;

TEST(FltInstanceGraphTest, CountsTheNodesOfTheSceneAndItsDepth)
{
    FltInstanceGraph graph;
    EXPECT_EQ(graph.addNodes({0, 1}), Answer::fine);
    EXPECT_EQ(graph.addNodes({0, 2}, 3), Answer::fine);
    EXPECT_EQ(graph.getNodes(), 5);
    EXPECT_EQ(graph.getDepth(), 2);
}

TEST(FltInstanceGraphTest, ASharedScopeCountsOnceForEachPlace)
{
    FltInstanceGraph graph;
    graph.addNodes({0, 1});
    int const tree = graph.addScope({0, 1});
    graph.addNodes({tree, 1}, 9);
    EXPECT_EQ(graph.getNodes(), 11);
    EXPECT_EQ(graph.place(tree, {0, 1}), Answer::fine);
    EXPECT_EQ(graph.getNodes(), 11 + 9);
    graph.addNodes({tree, 1}); // grows in both places
    EXPECT_EQ(graph.getNodes(), 11 + 9 + 2);
}

TEST(FltInstanceGraphTest, AScopeCannotStandInItself)
{
    FltInstanceGraph graph;
    int const scope = graph.addScope({0, 1});
    EXPECT_EQ(graph.place(scope, {scope, 1}), Answer::endless);
}

TEST(FltInstanceGraphTest, AScopeCannotStandInOneThatItHolds)
{
    FltInstanceGraph graph;
    int const outer = graph.addScope({0, 1});
    int const inner = graph.addScope({outer, 1});
    int const innermost = graph.addScope({inner, 1});
    EXPECT_EQ(graph.place(outer, {innermost, 1}), Answer::endless);
    EXPECT_EQ(graph.place(innermost, {outer, 1}), Answer::fine);
}

TEST(FltInstanceGraphTest, AScopeCannotStandInOneThatHoldsItByAnotherPlace)
{
    FltInstanceGraph graph;
    int const first = graph.addScope({0, 1});
    int const second = graph.addScope({0, 1});
    EXPECT_EQ(graph.place(first, {second, 1}), Answer::fine);
    EXPECT_EQ(graph.place(second, {first, 1}), Answer::endless);
}

TEST(FltInstanceGraphTest, NodesBelowTheDeepestPlaceAreRefused)
{
    FltInstanceGraph graph;
    EXPECT_EQ(graph.addNodes({0, FltLimits::sceneDepth}), Answer::fine);
    EXPECT_EQ(graph.addNodes({0, FltLimits::sceneDepth + 1}), Answer::tooDeep);
}

TEST(FltInstanceGraphTest, AChainOfScopesIsNoDeeperThanAScene)
{
    FltInstanceGraph graph;
    int below = graph.addUnattachedScope();
    graph.addNodes({below, 900});
    int above = graph.addUnattachedScope();
    EXPECT_EQ(graph.place(below, {above, 900}), Answer::fine);
    EXPECT_EQ(graph.place(above, {0, FltLimits::sceneDepth - 1800 + 1}), Answer::tooDeep);
    EXPECT_EQ(graph.place(above, {0, FltLimits::sceneDepth - 1800}), Answer::fine);
}

TEST(FltInstanceGraphTest, ADeeplyPlacedScopeMayNotGrowDeeperThanTheScene)
{
    FltInstanceGraph graph;
    int const scope = graph.addScope({0, 1});
    EXPECT_EQ(graph.place(scope, {0, FltLimits::sceneDepth - 10}), Answer::fine);
    EXPECT_EQ(graph.addNodes({scope, 10}), Answer::fine);
    EXPECT_EQ(graph.addNodes({scope, 11}), Answer::tooDeep);
}

TEST(FltInstanceGraphTest, ScopesThatDoubleAtEachLevelAreRefusedBeforeTheSceneIsTooLarge)
{
    FltInstanceGraph graph;
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

TEST(FltInstanceGraphTest, ScopesThatAreMultipliedBeforeTheyGrowAreRefusedToo)
{
    FltInstanceGraph graph;
    FltInstanceGraph::Place head{0, 1};
    Answer answer = Answer::fine;
    for (int level = 0; level < 100 && answer == Answer::fine; ++level) {
        int const scope = graph.addScope(head);
        for (int copy = 0; copy < 3 && answer == Answer::fine; ++copy)
            answer = graph.place(scope, head);
        head = {scope, 1};
    }
    EXPECT_EQ(answer, Answer::tooLarge);
    EXPECT_LE(graph.getNodes(), FltLimits::sceneNodes);
}

TEST(FltInstanceGraphTest, APartOfAnotherSceneBeginsAtItsDepth)
{
    FltInstanceGraph part(FltLimits::sceneDepth - 5);
    EXPECT_EQ(part.addNodes({0, 5}), Answer::fine);
    EXPECT_EQ(part.addNodes({0, 6}), Answer::tooDeep);
    EXPECT_EQ(part.getDepth(), 5);

    FltInstanceGraph whole;
    int const scope = whole.addFinishedScope({0, 3}, 5, 100);
    EXPECT_EQ(whole.getDepth(), 8);
    EXPECT_EQ(whole.getNodes(), 101);
    EXPECT_EQ(whole.place(scope, {0, FltLimits::sceneDepth - 4}), Answer::tooDeep);
}

} // namespace
