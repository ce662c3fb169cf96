#include "visual/FltMeshMerger.h"

#include "visual/FltVisualWalk.h"

#include <Inventor/SbBox3f.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

using Node = std::shared_ptr<FltVisualNode>;

FltMesh triangle(float x = 0)
{
    FltMesh mesh;
    mesh.isLit = false;
    mesh.positions = {SbVec3f(x, 0, 0), SbVec3f(x + 1, 0, 0), SbVec3f(x, 1, 0)};
    mesh.colors = {0xff0000ff};
    mesh.indices = {0, 1, 2, FltMesh::end};
    return mesh;
}

SbDPMatrix by(double x, double y = 0)
{
    SbDPMatrix matrix;
    matrix.setTranslate(SbVec3d(x, y, 0));
    return matrix;
}

/// Places of all corners in the world, in thousandths, and their colours; in any order.
std::vector<std::array<long, 4>> cornersOf(Node const& root)
{
    std::vector<std::array<long, 4>> corners;
    FltVisualWalk walk(root);
    while (walk.next())
        for (std::size_t i = 0; i < walk.mesh().positions.size(); ++i) {
            FltMesh const& mesh = walk.mesh();
            SbVec3d place;
            walk.matrix().multVecMatrix(mesh.origin + SbVec3d(mesh.positions[i]), place);
            auto const rounded = [&](int axis) { return std::lround(place[axis] * 1000); };
            corners.push_back({rounded(0), rounded(1), rounded(2),
                               static_cast<long>(mesh.colors[mesh.colors.size() > 1 ? i : 0])});
        }
    std::sort(corners.begin(), corners.end());
    return corners;
}

class FltMeshMergerTest : public testing::Test
{
protected:
    /// A group with a mesh below a node.
    static FltVisualNode& add(FltVisualNode& above, double x = 0,
                              std::uint64_t offset = FltVisualRecord::none)
    {
        auto node = std::make_shared<FltVisualNode>();
        node->meshes = {triangle()};
        node->transform = {by(x)};
        node->record.offset = offset;
        above.children.push_back(std::move(node));
        return *above.children.back();
    }

    /// Merges, and expects everything to stand where it stood.
    void merge()
    {
        auto const before = cornersOf(root);
        FltMeshMerger::merge(*root, 1);
        EXPECT_EQ(cornersOf(root), before);
    }

    Node const root = std::make_shared<FltVisualNode>();
};

} // namespace

TEST_F(FltMeshMergerTest, JoinsAcrossNodesThatStandTogetherAndLeavesOutWhatIsEmptyThen)
{
    root->record.offset = 7;
    add(*root, 1, 100);
    FltVisualNode& outer = add(*root, 2, 200);
    add(outer, 3); // of the same record
    merge();
    EXPECT_TRUE(root->children.empty());
    ASSERT_EQ(root->meshes.size(), 1U);
    std::vector<std::uint64_t> offsets;
    for (FltMesh::Part const& part : root->meshes[0].parts)
        offsets.push_back(part.record.offset);
    EXPECT_EQ(offsets, (std::vector<std::uint64_t>{100, 200, 200}));
}

TEST_F(FltMeshMergerTest, MakesAMeshOfEachLook)
{
    for (int i = 0; i < 10; ++i)
        add(*root, i).meshes[0].level = static_cast<std::uint8_t>(i % 3);
    merge();
    EXPECT_EQ(root->meshes.size(), 3U);
}

TEST_F(FltMeshMergerTest, KeepsCommentsWithTheirNodes)
{
    FltVisualNode& node = add(*root);
    node.comments = {"built in 1950"};
    merge();
    ASSERT_EQ(root->children.size(), 1U);
    EXPECT_TRUE(node.meshes.empty());
}

TEST_F(FltMeshMergerTest, LeavesWhatBlendsAndWhatIsHiddenWhereItIs)
{
    add(*root).meshes[0].isBlended = true;
    add(*root).meshes[0].isHidden = true;
    add(*root).isHidden = true;
    merge();
    ASSERT_EQ(root->children.size(), 3U);
    for (Node const& child : root->children)
        EXPECT_EQ(child->meshes.size(), 1U);
    EXPECT_TRUE(root->meshes.empty());
}

TEST_F(FltMeshMergerTest, JoinsNothingAcrossWhatChangesOrMoves)
{
    auto const choose = [](FltVisualNode& node) {
        FltVisualSwitch& choice = node.become<FltVisualSwitch>();
        choice.wordsPerMask = 1;
        choice.masks = {3};
    };
    auto const change = [](FltVisualNode& node) { node.become<FltVisualLevels>().distances = {100}; };
    auto const turn = [](FltVisualNode& node) { node.become<FltVisualFlipBook>(); };
    for (std::function<void(FltVisualNode&)> const& make :
         std::initializer_list<std::function<void(FltVisualNode&)>>{choose, change, turn}) {
        Node const several = std::make_shared<FltVisualNode>();
        root->children = {several};
        root->meshes.clear();
        for (int i = 0; i < 2; ++i) {
            FltVisualNode& one = add(*several, i);
            add(one, 5);
            add(one, 6);
        }
        make(*several);
        merge();
        ASSERT_EQ(several->children.size(), 2U);
        for (Node const& child : several->children) {
            EXPECT_EQ(child->meshes.size(), 1U);
            EXPECT_TRUE(child->children.empty());
        }
        EXPECT_TRUE(root->meshes.empty());
    }
}

TEST_F(FltMeshMergerTest, MovesWhatAJointMovesIntoTheJointAndNoFarther)
{
    add(*root);
    FltVisualNode& joint = add(*root, 3);
    joint.become<FltVisualJoint>().translation[2].current = 5;
    add(joint, 1);
    merge();
    EXPECT_EQ(root->meshes.size(), 1U);
    ASSERT_EQ(joint.meshes.size(), 1U);
    EXPECT_EQ(joint.meshes[0].parts.size(), 2U);
}

TEST_F(FltMeshMergerTest, LetsNothingOutOfALightAndNothingIn)
{
    FltVisualNode& lit = add(*root);
    FltVisualNode const& dark = add(lit);
    FltVisualNode& lamp = add(lit);
    lamp.become<FltVisualLight>();
    lamp.meshes.clear();
    FltVisualNode const& bright = add(lit);
    merge();
    EXPECT_EQ(lit.children.size(), 3U);
    EXPECT_EQ(dark.meshes.size(), 1U);
    EXPECT_EQ(bright.meshes.size(), 1U);
    EXPECT_EQ(lit.meshes.size(), 1U);
    EXPECT_TRUE(root->meshes.empty());
}

TEST_F(FltMeshMergerTest, MergesInsideOfWhatStandsAtSeveralPlaces)
{
    add(add(*root, 1), 2);
    Node const shared = root->children.front();
    add(*root).children.push_back(shared);
    merge();
    EXPECT_EQ(shared->meshes.size(), 1U);
    EXPECT_TRUE(shared->children.empty());
    EXPECT_EQ(shared->meshes[0].parts.size(), 2U);
    EXPECT_EQ(root->meshes.size(), 1U);
}

TEST_F(FltMeshMergerTest, LeavesInMirrorsAndBelowFlatMatricesWhatStandsThere)
{
    SbDPMatrix const mirror(-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    SbDPMatrix const flat(0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    SbDPMatrix const perspective(1, 0, 0, 0.01, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    for (SbDPMatrix const& matrix : {mirror, flat, perspective}) {
        root->children.clear();
        root->meshes.clear();
        FltVisualNode& turned = add(*root);
        turned.transform = {matrix};
        add(turned);
        merge();
        ASSERT_EQ(root->children.size(), 1U);
        EXPECT_EQ(turned.meshes.size(), 1U);
        EXPECT_TRUE(turned.children.empty());
    }
}

TEST_F(FltMeshMergerTest, PutsNoMeshIntoAScaleOrCopies)
{
    auto const scaled = std::make_shared<FltVisualNode>();
    scaled->become<FltVisualScale>().factor = 0.5;
    auto const copies = std::make_shared<FltVisualNode>();
    copies->become<FltVisualCopies>().places = {by(0), by(0, 9)};
    root->children = {scaled, copies};
    for (Node const& each : {scaled, copies})
        add(add(*each, 3), 4);
    merge();
    for (Node const& each : {scaled, copies}) {
        EXPECT_TRUE(each->meshes.empty());
        ASSERT_EQ(each->children.size(), 1U);
        EXPECT_EQ(each->children[0]->meshes.size(), 1U);
    }
}

TEST_F(FltMeshMergerTest, CutsWhatIsLargeIntoPiecesThatStandSideBySide)
{
    constexpr std::size_t corners = FltMeshMerger::cornersOfPiece / 8;
    for (int i = 0; i < 32; ++i) {
        FltMesh& mesh = add(*root, i * 7 % 32 * 10).meshes[0]; // not in their order
        mesh.positions.assign(corners, SbVec3f(1, 0, 0));
    }
    merge();
    EXPECT_EQ(root->meshes.size(), 4U);
    std::vector<SbBox3f> boxes;
    for (FltMesh const& mesh : root->meshes) {
        EXPECT_LE(mesh.positions.size(), FltMeshMerger::cornersOfPiece);
        SbBox3f box;
        for (SbVec3f const& position : mesh.positions)
            box.extendBy(position);
        for (SbBox3f const& other : boxes)
            EXPECT_FALSE(box.intersect(other));
        boxes.push_back(box);
    }
}

TEST_F(FltMeshMergerTest, JoinsNothingThatLiesSoFarApartThatFloatsDoNotHoldBoth)
{
    for (double const x : {0.001, 2.001, 1'000'000.001, 1'000'002.001})
        add(*root, x);
    merge();
    ASSERT_EQ(root->meshes.size(), 2U);
    for (FltMesh const& mesh : root->meshes)
        EXPECT_EQ(mesh.parts.size(), 2U);
}

TEST_F(FltMeshMergerTest, EndsWithPlacesThatAreNoNumbers)
{
    for (int i = 0; i < 4; ++i)
        add(*root).meshes[0].positions.assign(FltMeshMerger::cornersOfPiece,
                                              SbVec3f(std::nanf(""), INFINITY, 0));
    FltMeshMerger::merge(*root, 1);
    EXPECT_EQ(root->meshes.size(), 4U);
}

TEST_F(FltMeshMergerTest, LeavesApartWhatIsFarApartAlongAnyAxis)
{
    for (SbVec3d const& way : {SbVec3d(1e6, 0, 0), SbVec3d(0, 1e6, 0), SbVec3d(0, 0, 1e6)}) {
        root->children.clear();
        root->meshes.clear();
        add(*root);
        add(*root).transform[0].setTranslate(way);
        merge();
        EXPECT_EQ(root->meshes.size(), 2U) << way[0] << way[1];
    }
}
