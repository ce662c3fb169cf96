#include "visual/FltPolygonCutter.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

using Corners = std::vector<SbVec3d>;

constexpr int end = FltPolygonCutter::end;

std::vector<int> cut(Corners const& corners)
{
    FltPolygonCutter cutter;
    return cutter.cut(corners, FltPolygonCutter::normalOf(corners));
}

/// The area of all pieces, cut as the toolkit does: from the first corner on.
double areaOf(std::vector<int> const& pieces, Corners const& corners)
{
    double sum = 0;
    std::vector<SbVec3d> piece;
    for (int const corner : pieces) {
        if (corner != end) {
            piece.push_back(corners[static_cast<std::size_t>(corner)]);
            continue;
        }
        for (std::size_t i = 1; i + 1 < piece.size(); ++i)
            sum += (piece[i] - piece[0]).cross(piece[i + 1] - piece[0]).length() / 2;
        piece.clear();
    }
    return sum;
}

Corners star(int points, double radius)
{
    Corners corners;
    for (int i = 0; i < 2 * points; ++i) {
        double const angle = 3.14159265358979 * i / points;
        double const r = i % 2 == 0 ? radius : radius / 3;
        corners.emplace_back(r * std::cos(angle), r * std::sin(angle), 0);
    }
    return corners;
}

} // namespace

TEST(FltPolygonCutter, leavesConvexPolygonsWhole)
{
    EXPECT_EQ(cut({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}), (std::vector<int>{0, 1, 2, end}));
    EXPECT_EQ(cut({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), (std::vector<int>{0, 1, 2, 3, end}));
    EXPECT_EQ(cut({{0, 0, 0}, {2, 0, 0}, {3, 1, 0}, {2, 2, 0}, {0, 2, 0}}),
              (std::vector<int>{0, 1, 2, 3, 4, end}));
}

TEST(FltPolygonCutter, beginsAFourCorneredFaceAtItsInnerCorner)
{
    EXPECT_EQ(cut({{0, 0, 0}, {4, 0, 0}, {1, 1, 0}, {0, 4, 0}}), (std::vector<int>{2, 3, 0, 1, end}));
}

TEST(FltPolygonCutter, coversAConcavePolygonOnceFromEitherSide)
{
    for (int const points : {4, 5, 50, 400}) {
        Corners corners = star(points, 3);
        double const area = FltPolygonCutter::normalOf(corners).length() / 2;
        EXPECT_NEAR(areaOf(cut(corners), corners), area, 1e-9 * area) << points;
        std::reverse(corners.begin(), corners.end());
        EXPECT_NEAR(areaOf(cut(corners), corners), area, 1e-9 * area) << points;
    }
}

TEST(FltPolygonCutter, coversPolygonsThatStandUprightOrLeadIntoAHoleAndBack)
{
    Corners const comb = {{0, 1, 0}, {5, 1, 0}, {5, 1, 3}, {4, 1, 3}, {4, 1, 1}, {3, 1, 1},
                          {3, 1, 3}, {2, 1, 3}, {2, 1, 1}, {1, 1, 1}, {1, 1, 3}, {0, 1, 3}};
    EXPECT_NEAR(areaOf(cut(comb), comb), FltPolygonCutter::normalOf(comb).length() / 2, 1e-9);
    Corners const hole = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0},
                          {1, 1, 0}, {1, 3, 0}, {3, 3, 0}, {3, 1, 0}, {1, 1, 0}};
    EXPECT_NEAR(areaOf(cut(hole), hole), 12, 1e-9);
}

TEST(FltPolygonCutter, cutsAPolygonThatIsBentIntoTriangles)
{
    Corners const bent = {{0, 0, 0}, {1, 0, 0}, {2, 0, 1}, {2, 1, 1}, {1, 1, 0}, {0, 1, 0}};
    EXPECT_EQ(cut(bent).size(), 4U * 4U);
}

TEST(FltPolygonCutter, takesACornerForAnInnerOneThatBendsByMoreThanATenMillionth)
{
    auto const bentBy = [](double sine) {
        return Corners{{0, 0, 0}, {1, sine / 2, 0}, {2, 0, 0}, {2, 2, 0}};
    };
    EXPECT_EQ(cut(bentBy(0.9e-7)), (std::vector<int>{0, 1, 2, 3, end}));
    EXPECT_EQ(cut(bentBy(1.1e-7)), (std::vector<int>{1, 2, 3, 0, end}));
    EXPECT_EQ(cut(bentBy(-1.1e-7)), (std::vector<int>{0, 1, 2, 3, end}));
}

TEST(FltPolygonCutter, takesAPolygonForFlatThatIsBentByLessThanAThousandthOfItsSize)
{
    auto const wave = [](double height) {
        Corners corners;
        for (int i = 0; i < 6; ++i)
            corners.emplace_back(5 * std::cos(i * 1.04719755119660), 5 * std::sin(i * 1.04719755119660),
                                 i % 2 == 0 ? 0 : height);
        return corners;
    };
    EXPECT_EQ(cut(wave(0.0099)), (std::vector<int>{0, 1, 2, 3, 4, 5, end}));
    EXPECT_EQ(cut(wave(0.0101)).size(), 4U * 4U);
}

TEST(FltPolygonCutter, endsWithWhateverCrossesItself)
{
    Corners pentagram;
    for (int i = 0; i < 5; ++i)
        pentagram.emplace_back(std::cos(i * 2.513274), std::sin(i * 2.513274), 0);
    EXPECT_EQ(cut(pentagram).size(), 3U * 4U);
    Corners const same(6, SbVec3d(1, 1, 1));
    FltPolygonCutter cutter;
    EXPECT_FALSE(cutter.cut(same, SbVec3d(0, 0, 1)).empty());
}

TEST(FltPolygonCutter, takesALineAndAPointAsWithoutArea)
{
    auto const hasArea = [](Corners const& corners) {
        return FltPolygonCutter::hasArea(corners, FltPolygonCutter::normalOf(corners));
    };
    EXPECT_TRUE(hasArea({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}));
    EXPECT_FALSE(hasArea({{0, 0, 0}, {1, 1, 1}, {3, 3, 3}}));
    EXPECT_FALSE(hasArea({{7, 7, 7}, {7, 7, 7}, {7, 7, 7}}));
    EXPECT_TRUE(hasArea({{0, 0, 0}, {1, 0, 0}, {1, 1e-11, 0}}));
    EXPECT_FALSE(hasArea({{0, 0, 0}, {1, 0, 0}, {1, 1e-13, 0}}));
    EXPECT_TRUE(hasArea({{0, 0, 0}, {1e6, 0, 0}, {1e6, 1e-5, 0}}));
    EXPECT_TRUE(hasArea({{0, 0, 0}, {1, 1, 0}, {1, 0, 0}, {0, 1, 0}})); // each triangle has one
}

TEST(FltPolygonCutter, seesTheInnerCornerOfAnArrowWhereverItBegins)
{
    FltPolygonCutter cutter;
    Corners arrow = {{0, 0, 5}, {2, 0, 5}, {0.5, 0.5, 5}, {0, 2, 5}};
    for (int turn = 0; turn < 4; ++turn) {
        EXPECT_FALSE(cutter.isConvex(arrow, FltPolygonCutter::normalOf(arrow))) << turn;
        std::rotate(arrow.begin(), arrow.begin() + 1, arrow.end());
    }
    Corners const square = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    EXPECT_TRUE(cutter.isConvex(square, FltPolygonCutter::normalOf(square)));
    Corners const repeated = {{0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_TRUE(cutter.isConvex(repeated, FltPolygonCutter::normalOf(repeated)));
}

TEST(FltPolygonCutter, seesMoreThanAThousandthOfTheSizeAsNotFlat)
{
    auto const isFlat = [](double height) {
        Corners const corners = {{0, 0, 0}, {10, 0, 0}, {10, 10, height}, {0, 10, 0}};
        return FltPolygonCutter::isFlat(corners, FltPolygonCutter::normalOf(corners));
    };
    EXPECT_FALSE(isFlat(0.1));
    EXPECT_TRUE(isFlat(0.01));
}
