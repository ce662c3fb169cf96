#include "model/FltVertex.h"

#include <gtest/gtest.h>

TEST(FltVertex, isBetweenTwoOthersInAllThatBothHave)
{
    FltVertex from;
    from.position[0] = 4;
    from.setColor(0xff0000ff);
    from.setUv({0, 1});
    FltVertex to;
    to.position[0] = 8;
    to.position[2] = 2;
    to.setColor(0x00ff00ff);
    to.setUv({1, 1});
    to.setNormal({0, 0, 1});
    FltVertex const vertex = FltVertex::between(from, to, 0.25);
    EXPECT_EQ(vertex.position[0], 5);
    EXPECT_EQ(vertex.position[1], 0);
    EXPECT_EQ(vertex.position[2], 0.5);
    EXPECT_EQ(vertex.uv[0], 0.25F);
    EXPECT_EQ(vertex.uv[1], 1);
    EXPECT_EQ(vertex.color, 0xbf4000ffU);
    EXPECT_TRUE(vertex.has(FltVertex::hasUv) && vertex.has(FltVertex::hasColor));
    EXPECT_FALSE(vertex.has(FltVertex::hasNormal));
}
