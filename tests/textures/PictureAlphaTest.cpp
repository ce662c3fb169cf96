#include "textures/PictureAlpha.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace
{

/// A picture with alpha, grey or in colours, of pixels that have these alphas.
PicturePixels picture(std::vector<int> const& alphas, int components = 4)
{
    PicturePixels made{static_cast<int>(alphas.size()), 1, components, {}};
    for (int const alpha : alphas) {
        made.bytes.insert(made.bytes.end(), static_cast<std::size_t>(components - 1), 128);
        made.bytes.push_back(static_cast<unsigned char>(alpha));
    }
    return made;
}

/// Pixels of which some are half clear, and the others opaque or clear.
PicturePixels mixed(std::size_t graded, std::size_t all)
{
    std::vector<int> alphas(all, 255);
    alphas.back() = 0;
    std::fill_n(alphas.begin(), graded, 128);
    return picture(alphas);
}

} // namespace

TEST(PictureAlpha, isNoneWithoutAnAlphaOrWhereItHidesNothing)
{
    EXPECT_EQ(alphaOf({1, 1, 3, {1, 2, 3}}), PictureAlpha::none);
    EXPECT_EQ(alphaOf({2, 1, 1, {0, 9}}), PictureAlpha::none);
    EXPECT_EQ(alphaOf(picture({255, 255})), PictureAlpha::none);
    EXPECT_EQ(alphaOf(picture({255, 255}, 2)), PictureAlpha::none);
}

TEST(PictureAlpha, takesPixelsForThereBelowATenthAndAboveNineTenths)
{
    EXPECT_EQ(alphaOf(picture({0, 25, 230, 255})), PictureAlpha::cutOut);
    EXPECT_EQ(alphaOf(picture({0, 25, 230, 255}, 2)), PictureAlpha::cutOut);
    EXPECT_EQ(alphaOf(picture({26, 255})), PictureAlpha::graded);
    EXPECT_EQ(alphaOf(picture({0, 229})), PictureAlpha::graded);
}

TEST(PictureAlpha, coversLessWhenSmoothWhereLeavesAreSinglePixels)
{
    auto const isSmooth = [](int size) {
        PicturePixels made{16, 16, 4, std::vector<unsigned char>(16 * 16 * 4, 9)};
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x)
                made.bytes[static_cast<std::size_t>(4) * static_cast<std::size_t>(16 * y + x) + 3] =
                    x % 8 < size && y % 8 < size ? 255 : 0;
        return coversAsMuchWhenSmooth(made);
    };
    EXPECT_FALSE(isSmooth(1));
    EXPECT_TRUE(isSmooth(5));
    EXPECT_TRUE(isSmooth(8));
    EXPECT_TRUE(isSmooth(0));
}

TEST(PictureAlpha, takesAPixelForThereFromAHalfOn)
{
    for (unsigned char const alpha : {127, 128})
        EXPECT_TRUE(coversAsMuchWhenSmooth({2, 1, 2, {9, alpha, 9, alpha}})) << int(alpha);
}

TEST(PictureAlpha, letsOnePixelInTwentyBeGraded)
{
    EXPECT_EQ(alphaOf(mixed(5, 100)), PictureAlpha::cutOut);
    EXPECT_EQ(alphaOf(mixed(6, 100)), PictureAlpha::graded);
}

TEST(PictureAlpha, IsTheLastByteOfAPixelAndCanBeLeftOut)
{
    PicturePixels const colors{2, 1, 4, {1, 2, 3, 200, 4, 5, 6, 201}};
    ASSERT_TRUE(hasAlpha(colors));
    PicturePixels const opaque = withoutAlpha(colors);
    EXPECT_EQ(opaque.components, 3);
    EXPECT_EQ(opaque.width, 2);
    EXPECT_EQ(opaque.bytes, (std::vector<unsigned char>{1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(hasAlpha(opaque));
    PicturePixels const grey{1, 2, 2, {1, 200, 2, 201}};
    ASSERT_TRUE(hasAlpha(grey));
    EXPECT_EQ(withoutAlpha(grey).bytes, (std::vector<unsigned char>{1, 2}));
    EXPECT_FALSE(hasAlpha(withoutAlpha(grey)));
}
