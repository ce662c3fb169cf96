#include "scene/FltMatrixNodes.h"

#include "toolkit/SoNodeRef.h"
#include "visual/FltNodeMatrix.h"

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoTranslation.h>
#include <gtest/gtest.h>

namespace
{

/// The only node that a matrix becomes; null if there is none.
template <class Node>
Node* nodeOf(SoNodeRef<SoGroup> const& group, SbDPMatrix const& matrix)
{
    FltMatrixNodes::add(*group, matrix);
    return group->getNumChildren() == 1 ? dynamic_cast<Node*>(group->getChild(0)) : nullptr;
}

} // namespace

TEST(FltMatrixNodes, becomeWhatSuitsThem)
{
    SoNodeRef<SoGroup> const moved(new SoGroup);
    auto* const translation = nodeOf<SoTranslation>(moved, FltNodeMatrix::by({1, 2, 3}));
    ASSERT_NE(translation, nullptr);
    EXPECT_EQ(translation->translation.getValue(), SbVec3f(1, 2, 3));

    SbDPMatrix doubled;
    doubled.setScale(2.0);
    SoNodeRef<SoGroup> const scaled(new SoGroup);
    auto* const transform = nodeOf<SoMatrixTransform>(scaled, doubled);
    ASSERT_NE(transform, nullptr);
    EXPECT_EQ(transform->matrix.getValue(), SbMatrix(doubled));
}

TEST(FltMatrixNodes, areNotThereForWhatChangesNothing)
{
    SoNodeRef<SoGroup> const group(new SoGroup);
    FltMatrixNodes::add(*group, SbDPMatrix::identity());
    FltMatrixNodes::addTranslation(*group, {0, 0, 0});
    EXPECT_EQ(group->getNumChildren(), 0);
}

TEST(FltMatrixNodes, leadFromZeroToZero)
{
    FltLocalZeros::Zeros zeros{{1e6, 0, 0}, {3e6, 0, 0}, true};
    SbDPMatrix const matrix = FltMatrixNodes::between(zeros, FltNodeMatrix::by({-2e6, 0.25, 0}));
    EXPECT_EQ(matrix, FltNodeMatrix::by({0, 0.25, 0}));
}
