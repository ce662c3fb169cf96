#include "inspect/FltFaceShape.h"

#include <cmath>
#include <gtest/gtest.h>

TEST(FltFaceShape, takesASquareAsConvexAndFlat)
{
    FltFaceShape const shape = FltFaceShape::of({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    EXPECT_TRUE(shape.isFinite && shape.hasArea && shape.isConvex && shape.isFlat);
}

TEST(FltFaceShape, seesTheInnerCornerOfAnArrowWhereverItBegins)
{
    std::vector<std::array<double, 3>> arrow = {{0, 0, 5}, {2, 0, 5}, {0.5, 0.5, 5}, {0, 2, 5}};
    for (int turn = 0; turn < 4; ++turn) {
        EXPECT_FALSE(FltFaceShape::of(arrow).isConvex) << turn;
        arrow.push_back(arrow.front());
        arrow.erase(arrow.begin());
    }
}

TEST(FltFaceShape, takesALineAndAPointAsWithoutArea)
{
    EXPECT_FALSE(FltFaceShape::of({{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}).hasArea);
    EXPECT_FALSE(FltFaceShape::of({{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}).hasArea);
}

/// It is drawn, and was said to have no area.
TEST(FltFaceShape, takesASliverAsAreaAsFarAsItIsDrawn)
{
    EXPECT_TRUE(FltFaceShape::of({{0, 0, 0}, {1, 0, 0}, {1, 1e-11, 0}}).hasArea);
    EXPECT_FALSE(FltFaceShape::of({{0, 0, 0}, {1, 0, 0}, {1, 1e-13, 0}}).hasArea);
    EXPECT_TRUE(FltFaceShape::of({{0, 0, 0}, {1e6, 0, 0}, {1e6, 1e-5, 0}}).hasArea);
}

TEST(FltFaceShape, toleratesARepeatedCorner)
{
    FltFaceShape const shape = FltFaceShape::of({{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    EXPECT_TRUE(shape.hasArea && shape.isConvex && shape.isFlat);
}

TEST(FltFaceShape, seesAHundredthOfTheSizeAsNotFlat)
{
    EXPECT_FALSE(FltFaceShape::of({{0, 0, 0}, {10, 0, 0}, {10, 10, 1}, {0, 10, 0}}).isFlat);
    EXPECT_TRUE(FltFaceShape::of({{0, 0, 0}, {10, 0, 0}, {10, 10, 0.01}, {0, 10, 0}}).isFlat);
}

TEST(FltFaceShape, seesWhatIsNoNumber)
{
    EXPECT_FALSE(FltFaceShape::of({{0, 0, 0}, {1, 0, 0}, {NAN, 1, 0}}).isFinite);
    EXPECT_FALSE(FltFaceShape::of({{0, 0, 0}, {INFINITY, 0, 0}, {0, 1, 0}}).isFinite);
    EXPECT_TRUE(FltFaceShape::of({{0, 0, 0}, {1e300, 0, 0}, {0, 1e300, 0}}).isFinite);
}
