#include "convert/ReferenceCircles.h"

#include <algorithm>
#include <gtest/gtest.h>

using Groups = std::vector<std::vector<std::size_t>>;

TEST(ReferenceCircles, areGroupsOfNodesThatLeadToEachOther)
{
    // 0 -> 1 -> 2 -> 1, 2 -> 3, 4 -> 0
    EXPECT_EQ(ReferenceCircles::groupsOf({{1}, {2}, {1, 3}, {}, {0}}), (Groups{{3}, {1, 2}, {0}, {4}}));
    EXPECT_EQ(ReferenceCircles::groupsOf({{0}}), Groups{{0}}) << "a node that leads to itself";
    EXPECT_EQ(ReferenceCircles::groupsOf({}), Groups{});
}

TEST(ReferenceCircles, mayShareNodes)
{
    // two circles over 1
    EXPECT_EQ(ReferenceCircles::groupsOf({{1}, {0, 2}, {1}}), (Groups{{0, 1, 2}}));
}

TEST(ReferenceCircles, areFoundInChainsThatNoStackWouldHold)
{
    constexpr std::size_t length = 300'000;
    ReferenceCircles::Edges edges(length);
    for (std::size_t i = 0; i + 1 < length; ++i)
        edges[i].push_back(i + 1);
    EXPECT_EQ(ReferenceCircles::groupsOf(edges).size(), length);
    edges.back().push_back(0);
    EXPECT_EQ(ReferenceCircles::groupsOf(edges).size(), 1U);
}
