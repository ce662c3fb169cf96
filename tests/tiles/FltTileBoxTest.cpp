#include "tiles/FltTileBox.h"

#include <cmath>
#include <gtest/gtest.h>

TEST(FltTileBox, isItsMiddleAndHalfOfItsSides)
{
    FltTileBox const box(SbBox3d(SbVec3d(-1, 0, 10), SbVec3d(3, 6, 20)));
    EXPECT_EQ(box.numbers(), (std::array<double, 12>{1, 3, 15, 2, 0, 0, 0, 3, 0, 0, 0, 5}));
    EXPECT_NEAR(box.diagonal(), std::sqrt(16.0 + 36 + 100), 1e-12);
}

TEST(FltTileBox, hasAnInsideEvenIfItIsFlat)
{
    FltTileBox const box(SbBox3d(SbVec3d(0, 0, 7), SbVec3d(2, 2, 7)));
    EXPECT_EQ(box.numbers()[11], 0.01);
}

TEST(FltTileBox, standsWhereAMatrixBringsIt)
{
    SbDPMatrix const matrix(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 100, 200, 300, 1);
    FltTileBox const box = FltTileBox(SbBox3d(SbVec3d(0, 0, 0), SbVec3d(2, 4, 6))).movedBy(matrix);
    EXPECT_EQ(box.middle(), SbVec3d(98, 201, 303));
    SbBox3d around;
    for (SbVec3d const& corner : box.corners())
        around.extendBy(corner);
    EXPECT_EQ(around.getMin(), SbVec3d(96, 200, 300));
    EXPECT_EQ(around.getMax(), SbVec3d(100, 202, 306));
}
