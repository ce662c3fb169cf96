#include "gltf/GltfJson.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using Limits = std::numeric_limits<double>;

TEST(GltfValues, AreFiniteNumbers)
{
    EXPECT_EQ(GltfValues::readable(Limits::infinity()), Limits::max());
    EXPECT_EQ(GltfValues::readable(-Limits::infinity()), -Limits::max());
    EXPECT_EQ(GltfValues::readable(Limits::quiet_NaN()), 0);
    EXPECT_EQ(GltfValues::readable(-1.5), -1.5);
    EXPECT_EQ(GltfValues::readable(2e300), 2e300);
    EXPECT_FALSE(std::signbit(GltfValues::readable(-0.0)));
    EXPECT_EQ(GltfValues::list({1, -Limits::infinity(), Limits::quiet_NaN()}),
              GltfJson({1.0, -Limits::max(), 0.0}));
}

TEST(GltfValues, OfPartsHaveSixDigitsFromZeroToOne)
{
    EXPECT_EQ(GltfValues::part(0.12345678), 0.123457);
    EXPECT_EQ(GltfValues::part(0.5), 0.5);
    EXPECT_EQ(GltfValues::part(0), 0);
    EXPECT_EQ(GltfValues::part(1), 1);
    EXPECT_EQ(GltfValues::part(1.5), 1);
    EXPECT_EQ(GltfValues::part(-0.5), 0);
    EXPECT_EQ(GltfValues::part(Limits::quiet_NaN()), 0);
}

TEST(GltfValues, OfTextsAreUtf8WithoutControls)
{
    EXPECT_EQ(GltfValues::text("a b~\u00fc"), "a b~\u00fc");
    EXPECT_EQ(GltfValues::text("a\tb\x1f\x7f!"), "a b  !");
    EXPECT_EQ(GltfValues::text("O\xfcpen"), "O\u00fcpen");
}

TEST(GltfValues, OfPathsAreTheirLastParts)
{
    EXPECT_EQ(GltfValues::lastPart("textures/a.rgb"), "a.rgb");
    EXPECT_EQ(GltfValues::lastPart("C:\\textures\\b.rgb"), "b.rgb");
    EXPECT_EQ(GltfValues::lastPart("c.rgb"), "c.rgb");
    EXPECT_EQ(GltfValues::lastPart("d/"), "");
}
