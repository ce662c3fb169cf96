#include "visual/FltLocalZeros.h"

#include "visual/FltNodeMatrix.h"

#include <Inventor/SbDPRotation.h>
#include <gtest/gtest.h>

namespace
{

SbVec3d const nowhere(0, 0, 0);
SbVec3d const far(4'500'000, 5'300'000, 120);

std::shared_ptr<FltVisualNode> group()
{
    return std::make_shared<FltVisualNode>();
}

/// A node with a mesh of one by one that counts from an origin.
std::shared_ptr<FltVisualNode> meshAt(SbVec3d const& origin)
{
    auto node = group();
    FltMesh mesh;
    mesh.origin = origin;
    mesh.positions = {SbVec3f(-0.5F, 0, 0), SbVec3f(0.5F, 1, 0)};
    node->meshes.push_back(mesh);
    return node;
}

FltLocalZeros::Zeros zerosOf(FltVisualNode const& root, FltVisualNode const& node,
                             SbVec3d const& around = nowhere)
{
    return FltLocalZeros(root, 1).of(node, around);
}

} // namespace

TEST(FltLocalZeros, areThoseOfTheDatabaseWhereFloatsHoldEverything)
{
    auto const root = meshAt(nowhere);
    root->children = {meshAt(nowhere)};
    root->transform = {FltNodeMatrix::by({9e5, 0, 0})};
    FltLocalZeros::Zeros const zeros = zerosOf(*root, *root);
    EXPECT_EQ(zeros.around, nowhere);
    EXPECT_EQ(zeros.inside, nowhere);
    EXPECT_FALSE(zeros.isOneMatrix);
}

TEST(FltLocalZeros, standNearWhatLiesFarAway)
{
    auto const root = group();
    root->children = {meshAt(far)};
    FltLocalZeros::Zeros const zeros = zerosOf(*root, *root);
    EXPECT_LT((zeros.around - far).length(), 2);
    EXPECT_EQ(zeros.inside, zeros.around);
    EXPECT_EQ(zerosOf(*root, *root->children[0], zeros.inside).inside, zeros.inside) << "the same in it";
}

TEST(FltLocalZeros, standNearWhatLiesFarAwayAlongAnyAxis)
{
    for (int axis = 0; axis < 3; ++axis)
        for (double const place : {4'500'000.0, -4'500'000.0}) {
            SbVec3d origin = nowhere;
            origin[axis] = place;
            auto const root = meshAt(origin);
            EXPECT_LT((zerosOf(*root, *root).around - origin).length(), 2) << axis;
        }
}

TEST(FltLocalZeros, areNearOnBothSidesOfATransformation)
{
    auto const root = group();
    auto const placed = meshAt(far);
    placed->transform = {FltNodeMatrix::by(-far)};
    root->children = {placed};
    EXPECT_EQ(zerosOf(*root, *root).around, nowhere);
    EXPECT_EQ(zerosOf(*root, *placed).inside, far) << "nothing is left of the matrix";
}

TEST(FltLocalZeros, areNearBelowMatricesThatCancelEachOther)
{
    auto const root = group();
    auto const outer = group();
    auto const inner = meshAt(nowhere);
    outer->transform = {FltNodeMatrix::by(-far)};
    inner->transform = {FltNodeMatrix::by(far)};
    root->children = {outer};
    outer->children = {inner};
    EXPECT_EQ(zerosOf(*root, *outer).inside, far);
    EXPECT_EQ(zerosOf(*root, *inner, far).inside, nowhere);
    outer->children.clear();
    SbDPMatrix turned;
    turned.setRotate(SbDPRotation(SbVec3d(0, 0, 1), 0.5));
    inner->transform = {FltNodeMatrix::by(-far), turned, FltNodeMatrix::by(far)};
    root->children = {inner};
    EXPECT_TRUE(zerosOf(*root, *inner).isOneMatrix) << "of the same node";
}

TEST(FltLocalZeros, areTheSameForAPartAtAllItsPlaces)
{
    auto const root = group();
    auto const part = meshAt(far);
    root->children = {part, part};
    FltLocalZeros const zeros(*root, 1);
    EXPECT_EQ(zeros.of(*part, {1, 2, 3}).around, zeros.of(*part, far).around);
}

TEST(FltLocalZeros, leaveTurningFacesAndFilesWhereTheyAre)
{
    auto const root = meshAt(far);
    auto const turning = meshAt(nowhere);
    turning->become<FltVisualTurning>().foot = far;
    auto const file = group();
    file->become<FltVisualFile>().path = "a.flt";
    root->children = {turning, file};
    FltLocalZeros const zeros(*root, 1);
    SbVec3d const inRoot = zeros.of(*root, nowhere).inside;
    EXPECT_EQ(zeros.of(*turning, inRoot).around, inRoot);
    EXPECT_EQ(zeros.of(*turning, inRoot).inside, nowhere);
    EXPECT_EQ(zeros.of(*file, inRoot).around, nowhere);
}

TEST(FltLocalZeros, leaveWhatIsSeenInAPerspective)
{
    auto const root = meshAt(far);
    auto const skewed = meshAt(far);
    SbDPMatrix matrix;
    matrix[0][3] = 0.01;
    skewed->transform = {matrix};
    root->children = {skewed};
    FltLocalZeros const zeros(*root, 1);
    FltLocalZeros::Zeros const left = zeros.of(*skewed, zeros.of(*root, nowhere).inside);
    EXPECT_EQ(left.around, nowhere);
    EXPECT_EQ(left.inside, nowhere);
    EXPECT_FALSE(left.isOneMatrix);
}

/// As of rotations, which the toolkit makes of quaternions.
TEST(FltLocalZeros, standInMatricesThatAreOffInTheirLastBitsWhateverTheirSizeIs)
{
    for (double const size : {1e-4, 1.0, 1e4}) {
        auto const root = group(), rounded = meshAt(far);
        SbDPMatrix matrix;
        matrix.setScale(size);
        matrix[3][3] = 1 + 1e-13;
        rounded->transform = {matrix};
        root->children = {rounded};
        EXPECT_LT((zerosOf(*root, *rounded).inside - far).length(), 2) << size;
    }
}

TEST(FltLocalZeros, areNotMovedByAJointThatHoldsNothing)
{
    auto const root = meshAt({200, 0, 0}), joint = group();
    joint->become<FltVisualJoint>().frame = FltNodeMatrix::by(far + SbVec3d(0.3, 0, 0));
    root->children = {joint};
    EXPECT_EQ(zerosOf(*root, *root).around, nowhere);
    joint->children = {meshAt(far)};
    EXPECT_LT((zerosOf(*root, *root).around - far).length(), 200) << "what moves is far away";
}

TEST(FltLocalZeros, standAtWhatIsMeantWhereSomethingIsAstray)
{
    auto const root = group();
    root->children = {meshAt(far), meshAt({5e-4, 0, 0})};
    EXPECT_EQ(zerosOf(*root, *root).around, far);
    root->children = {meshAt(far), meshAt(-far)};
    EXPECT_EQ(zerosOf(*root, *root).around, nowhere) << "all around";
}

TEST(FltLocalZeros, areTheSameWhetherOrNotAGroupIsAroundAJoint)
{
    auto const aroundOf = [](bool isInGroup) {
        auto const root = meshAt(nowhere);
        root->children = {group()};
        if (isInGroup)
            root->children[0]->children = {group()};
        FltVisualNode& joint = isInGroup ? *root->children[0]->children[0] : *root->children[0];
        joint.become<FltVisualJoint>().frame = FltNodeMatrix::by(far + SbVec3d(0.3, 0, 0));
        return zerosOf(*root, *root).around;
    };
    EXPECT_EQ(aroundOf(true), aroundOf(false));
}

TEST(FltLocalZeros, areToleratedByTheUnit)
{
    auto const root = meshAt(nowhere);
    root->become<FltVisualText>().place = SbVec3d(2048.00011, 0, 0);
    EXPECT_NE(zerosOf(*root, *root).around, nowhere);
    EXPECT_EQ(FltLocalZeros(*root, 0.3048).of(*root, nowhere).around, nowhere);
    auto const scale = group();
    scale->become<FltVisualScale>().factor = 0.3048;
    scale->children = {root};
    EXPECT_EQ(zerosOf(*scale, *scale).inside, nowhere);
}

TEST(FltLocalZeros, holdInAChainOfAnyDepth)
{
    auto root = meshAt(far);
    for (int level = 0; level < 1000; ++level) {
        auto above = group();
        above->transform = {FltNodeMatrix::by({1, 0, 0})};
        above->children = {root};
        root = above;
    }
    EXPECT_LT((zerosOf(*root, *root).around - far - SbVec3d(1000, 0, 0)).length(), 2);
}

TEST(FltLocalZeros, areNoneOfTheirOwnBelowAHundredLevels)
{
    std::vector<std::shared_ptr<FltVisualNode>> chain = {group()};
    for (int level = 0; level < 101; ++level) {
        auto const below = level < 100 ? group() : meshAt(far);
        below->transform = {FltNodeMatrix::by({1, 0, 0})};
        chain.back()->children = {below};
        chain.push_back(below);
    }
    FltLocalZeros const zeros(*chain[0], 1);
    EXPECT_LT((zeros.of(*chain[99], nowhere).inside - far).length(), 5);
    EXPECT_EQ(zeros.of(*chain[100], nowhere).inside, nowhere);
}

TEST(FltLocalZeros, standNearWhatATransformationBringsFarAwayAlongAnyAxis)
{
    for (int axis = 0; axis < 3; ++axis) {
        SbVec3d place = nowhere;
        place[axis] = 4'500'000.3;
        auto const root = group();
        auto const placed = group();
        FltMesh mesh;
        mesh.positions = {SbVec3f(-4, -4, -4), SbVec3f(4, 4, 4)};
        placed->meshes = {mesh};
        placed->transform = {FltNodeMatrix::by(place)};
        root->children = {placed};
        EXPECT_LT((zerosOf(*root, *root).around - place).length(), 1) << axis;
    }
}

TEST(FltLocalZeros, areNoneInWhatHasNoEnd)
{
    for (double const way : {-1.0, 1.0}) {
        auto const root = group();
        root->children = {meshAt(nowhere), meshAt({way * 9e29, 0, 0})};
        EXPECT_NE(zerosOf(*root, *root).around, nowhere);
        root->children[1] = meshAt({way * 1e30, 0, 0});
        EXPECT_EQ(zerosOf(*root, *root).around, nowhere);
    }
}

TEST(FltLocalZeros, areOfTheirOwnWhereAMatrixLeavesLittleOfLargeNumbers)
{
    // Of a mesh at one place that a matrix brings nearer.
    auto const insideOf = [](float x, double way) {
        auto const root = group();
        auto const placed = group(), other = meshAt(far);
        FltMesh mesh;
        mesh.positions = {SbVec3f(x, 0, 0), SbVec3f(x + 1, 1, 0)};
        placed->meshes = {mesh};
        placed->transform = {FltNodeMatrix::by({way, 0, 0})};
        other->transform = {FltNodeMatrix::by(-far)};
        root->children = {placed, other};
        return zerosOf(*root, *placed).inside;
    };
    EXPECT_NE(insideOf(4e6F, -3.6e6), nowhere);
    EXPECT_EQ(insideOf(4e6F, -3.4e6), nowhere) << "more than an eighth is left";
    EXPECT_NE(insideOf(1700, -1700), nowhere);
    EXPECT_EQ(insideOf(1600, -1600), nowhere) << "floats hold it to a tenth of a millimetre";
}
