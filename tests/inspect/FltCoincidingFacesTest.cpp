#include "inspect/FltCoincidingFaces.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>

namespace
{

using Face = FltCoincidingFaces::Face;
using Layer = FltCoincidingFaces::Layer;

/// The corners of a square, and further ones in the same places with other zeros.
std::vector<SbVec3d> const corners = {{0, 0, 0},   {1, 0, 0},   {1, 1, 0},   {0, 1, 0},
                                      {0, 0, -0.}, {1, -0., 0}, {1, 1, -0.}, {-0., 1, 0}};

Face faceOf(std::initializer_list<std::size_t> numbers, bool isTwoSided = false, Layer const& layer = {})
{
    Face face{layer, {}, isTwoSided};
    for (std::size_t const number : numbers)
        face.corners.push_back(corners[number]);
    return face;
}

/// The places of a later face and the earlier one that it meets, for each pair.
std::vector<std::pair<int, int>> pairsOf(std::vector<Face> const& faces)
{
    FltCoincidingFaces coinciding(faces.size());
    FltModelTree::Number record = 0;
    for (Face const& face : faces)
        coinciding.add(face, {++record, 0});
    std::vector<std::pair<int, int>> places;
    for (FltCoincidingFaces::Pair const& pair : coinciding.takePairs()) {
        auto const at = [](FltCoincidingFaces::Place const& place) {
            return static_cast<std::size_t>(place.record) - 1;
        };
        EXPECT_TRUE(FltCoincidingFaces::areSame(faces[at(pair.earlier)], faces[at(pair.later)]));
        places.emplace_back(pair.later.record, pair.earlier.record);
    }
    EXPECT_TRUE(coinciding.takePairs().empty());
    return places;
}

using Pairs = std::vector<std::pair<int, int>>;

} // namespace

TEST(FltCoincidingFaces, findsAFaceOfOtherVerticesWhereverItBegins)
{
    for (Face const& second :
         {faceOf({0, 1, 2, 3}), faceOf({4, 5, 6, 7}), faceOf({6, 7, 4, 5}), faceOf({3, 4, 5, 2})})
        EXPECT_EQ(pairsOf({faceOf({0, 1, 2, 3}), second}), (Pairs{{2, 1}}));
}

TEST(FltCoincidingFaces, tellsTheFirstFaceOfThePlace)
{
    EXPECT_EQ(pairsOf({faceOf({0, 1, 2, 3}), faceOf({0, 1, 2}), faceOf({5, 6, 7, 4}), faceOf({1, 2, 3, 0})}),
              (Pairs{{3, 1}, {4, 1}}));
}

TEST(FltCoincidingFaces, tellsCornersApartThatHardlyDiffer)
{
    for (std::size_t corner = 0; corner < 4; ++corner)
        for (int axis = 0; axis < 3; ++axis) {
            Face near = faceOf({0, 1, 2, 3});
            near.corners[corner][axis] += near.corners[corner][axis] == 0 ? 1e-300 : 1e-15;
            EXPECT_EQ(pairsOf({faceOf({0, 1, 2, 3}), near}), Pairs{}) << corner << ' ' << axis;
            EXPECT_FALSE(FltCoincidingFaces::areSame(faceOf({0, 1, 2, 3}), near)) << corner << ' ' << axis;
        }
}

TEST(FltCoincidingFaces, tellsFacesOfOneRecordApart)
{
    FltCoincidingFaces coinciding(3);
    coinciding.add(faceOf({0, 1, 2}), {7, 0});
    coinciding.add(faceOf({1, 2, 3}), {7, 1});
    coinciding.add(faceOf({2, 0, 1}), {7, 5});
    std::vector<FltCoincidingFaces::Pair> const pairs = coinciding.takePairs();
    ASSERT_EQ(pairs.size(), 1U);
    EXPECT_EQ(pairs[0].later.number, 5U);
    EXPECT_EQ(pairs[0].earlier.number, 0U);
}

TEST(FltCoincidingFaces, leavesFacesBackToBackAlone)
{
    EXPECT_EQ(
        pairsOf({faceOf({0, 1, 2, 3}), faceOf({3, 2, 1, 0}), faceOf({7, 6, 5, 4}), faceOf({0, 1, 2, 3})}),
        (Pairs{{3, 2}, {4, 1}}));
    EXPECT_FALSE(FltCoincidingFaces::areSame(faceOf({0, 1, 2, 3}), faceOf({3, 2, 1, 0})));
}

TEST(FltCoincidingFaces, findsAFaceOfTwoSidesFromBoth)
{
    EXPECT_EQ(pairsOf({faceOf({0, 1, 2, 3}, true), faceOf({3, 2, 1, 0})}), (Pairs{{2, 1}}));
    EXPECT_EQ(pairsOf({faceOf({3, 2, 1, 0}), faceOf({0, 1, 2, 3}, true)}), (Pairs{{2, 1}}));
    for (Face const& triangle : {faceOf({2, 1, 0}), faceOf({1, 0, 2}), faceOf({0, 2, 1})})
        EXPECT_EQ(pairsOf({faceOf({0, 1, 2}, true), triangle}), (Pairs{{2, 1}}));
}

TEST(FltCoincidingFaces, tellsOfTheFrontOfAFaceBeforeItsBack)
{
    EXPECT_EQ(pairsOf({faceOf({3, 2, 1, 0}), faceOf({0, 1, 2, 3}), faceOf({0, 1, 2, 3}, true)}),
              (Pairs{{3, 2}, {3, 1}}));
}

TEST(FltCoincidingFaces, tellsNothingOfOtherLayersAndOtherCorners)
{
    Face const first = faceOf({0, 1, 2, 3}, false, {1, 0, 0});
    std::vector<Face> const others = {
        faceOf({0, 1, 2, 3}, false, {2, 0, 0}), faceOf({0, 1, 2, 3}, false, {1, 1, 0}),
        faceOf({0, 1, 2, 3}, false, {1, 0, 1}), faceOf({0, 1, 2}, false, {1, 0, 0}),
        faceOf({0, 2, 1, 3}, false, {1, 0, 0})};
    for (Face const& other : others) {
        EXPECT_EQ(pairsOf({first, other}), Pairs{});
        EXPECT_FALSE(FltCoincidingFaces::areSame(first, other));
    }
    EXPECT_TRUE(FltCoincidingFaces::areSame(others[2], faceOf({0, 1, 2, 3}, false, {1, 0, 1})));
}
