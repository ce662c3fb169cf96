#include "gltf/GltfColors.h"

#include <gtest/gtest.h>
#include <limits>

TEST(GltfColors, AreInEqualStepsOfLight)
{
    EXPECT_DOUBLE_EQ(GltfColors::linear(0.0), 0);
    EXPECT_DOUBLE_EQ(GltfColors::linear(1.0), 1);
    EXPECT_NEAR(GltfColors::linear(0.5), 0.214041, 1e-6);
    EXPECT_NEAR(GltfColors::linear(0.04), 0.04 / 12.92, 1e-12);
    EXPECT_DOUBLE_EQ(GltfColors::linear(-1.0), 0);
    EXPECT_DOUBLE_EQ(GltfColors::linear(7.0), 1);
    EXPECT_DOUBLE_EQ(GltfColors::linear(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(GltfColors, KeepTheirAlphaAsItIs)
{
    std::array<std::uint16_t, 4> const color = GltfColors::linear(std::uint32_t(0xff800080));
    EXPECT_EQ(color, (std::array<std::uint16_t, 4>{65535, 14146, 0, 0x8080}));
}
