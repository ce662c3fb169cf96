#include "gltf/GltfGrid.h"

#include <gtest/gtest.h>

TEST(GltfGrid, roundsToAPlaceAtMostHalfAStepAway)
{
    GltfGrid const grid = GltfGrid::in(SbBox3f(-10, 0, 5, 120.5F, 3, 6));
    EXPECT_EQ(grid.zero, SbVec3d(-10, 0, 5));
    EXPECT_NEAR(grid.step, 130.5 / 65535, 1e-12);
    for (SbVec3f const& position : {SbVec3f(-10, 0, 5), SbVec3f(120.5F, 3, 6), SbVec3f(77.7F, 1.5F, 5.25F)}) {
        auto const place = grid.rounded(position);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(grid.zero[axis] + grid.step * place[static_cast<std::size_t>(axis)],
                        static_cast<double>(position[axis]), grid.step / 2 + 1e-9);
    }
    EXPECT_EQ(grid.rounded(SbVec3f(1e30F, 0, 5))[0], 65535);
}

TEST(GltfGrid, hasAStepForASinglePlace)
{
    GltfGrid const grid = GltfGrid::in(SbBox3f(7, 8, 9, 7, 8, 9));
    EXPECT_EQ(grid.zero, SbVec3d(7, 8, 9));
    EXPECT_EQ(grid.step, 1);
    EXPECT_EQ(grid.rounded(SbVec3f(7, 8, 9)), (std::array<std::uint16_t, 3>{0, 0, 0}));
}
