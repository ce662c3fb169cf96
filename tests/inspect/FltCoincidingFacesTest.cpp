#include "inspect/FltCoincidingFaces.h"

#include <gtest/gtest.h>
#include <optional>

namespace
{

/// The corners of a square, twice.
struct Squares {
    Squares()
    {
        for (int copy = 0; copy < 2; ++copy)
            for (auto const& [x, y] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
                FltVertex vertex;
                vertex.position[0] = x;
                vertex.position[1] = copy == 0 ? y : y - 0.0;
                vertex.position[2] = copy == 0 ? 0.0 : -0.0;
                vertices.add(vertex);
            }
    }

    bool add(std::vector<std::uint32_t> const& corners, bool isTwoSided = false,
             FltCoincidingFaces::Layer const& layer = {})
    {
        return faces.add(layer, ++offset, corners, isTwoSided).has_value();
    }

    FltVertexStore vertices;
    FltCoincidingFaces faces{vertices};
    std::uint64_t offset = 0;
};

} // namespace

TEST(FltCoincidingFaces, findsAFaceOfOtherVerticesWhereverItBegins)
{
    for (std::vector<std::uint32_t> const& second :
         {std::vector<std::uint32_t>{0, 1, 2, 3}, {4, 5, 6, 7}, {6, 7, 4, 5}, {3, 4, 5, 2}}) {
        Squares squares;
        EXPECT_FALSE(squares.add({0, 1, 2, 3}));
        EXPECT_TRUE(squares.add(second));
    }
}

TEST(FltCoincidingFaces, tellsTheFirstFaceOfThePlace)
{
    Squares squares;
    EXPECT_EQ(squares.faces.add({}, 100, {0, 1, 2, 3}, false), std::nullopt);
    EXPECT_EQ(squares.faces.add({}, 200, {0, 1, 2}, false), std::nullopt);
    EXPECT_EQ(squares.faces.add({}, 300, {5, 6, 7, 4}, false), std::optional<std::uint64_t>(100));
    EXPECT_EQ(squares.faces.add({}, 400, {1, 2, 3, 0}, false), std::optional<std::uint64_t>(100));
}

TEST(FltCoincidingFaces, leavesFacesBackToBackAlone)
{
    Squares squares;
    EXPECT_FALSE(squares.add({0, 1, 2, 3}));
    EXPECT_FALSE(squares.add({3, 2, 1, 0}));
    EXPECT_TRUE(squares.add({7, 6, 5, 4}));
    EXPECT_TRUE(squares.add({0, 1, 2, 3}));
}

TEST(FltCoincidingFaces, findsAFaceOfTwoSidesFromBoth)
{
    Squares back;
    EXPECT_FALSE(back.add({0, 1, 2, 3}, true));
    EXPECT_TRUE(back.add({3, 2, 1, 0}));
    Squares front;
    EXPECT_FALSE(front.add({3, 2, 1, 0}));
    EXPECT_TRUE(front.add({0, 1, 2, 3}, true));
}

TEST(FltCoincidingFaces, tellsNothingOfOtherLayersAndOtherCorners)
{
    Squares squares;
    EXPECT_FALSE(squares.add({0, 1, 2, 3}, false, {1, 0, 0}));
    EXPECT_FALSE(squares.add({0, 1, 2, 3}, false, {2, 0, 0}));
    EXPECT_FALSE(squares.add({0, 1, 2, 3}, false, {1, 1, 0}));
    EXPECT_FALSE(squares.add({0, 1, 2, 3}, false, {1, 0, 1}));
    EXPECT_FALSE(squares.add({0, 1, 2}, false, {1, 0, 0}));
    EXPECT_FALSE(squares.add({0, 2, 1, 3}, false, {1, 0, 0}));
    EXPECT_TRUE(squares.add({0, 1, 2, 3}, false, {1, 0, 1}));
}
