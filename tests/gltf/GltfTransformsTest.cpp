#include "gltf/GltfTransforms.h"

#include "ReadGltf.h"

#include <gtest/gtest.h>

namespace
{

SbDPMatrix matrixOf(SbVec3d const& x, SbVec3d const& y, SbVec3d const& z, SbVec3d const& place = {0, 0, 0})
{
    return {x[0], x[1], x[2], 0, y[0], y[1], y[2], 0, z[0], z[1], z[2], 0, place[0], place[1], place[2], 1};
}

/// What the nodes of glTF do together.
SbDPMatrix productOf(GltfTransforms const& transforms)
{
    SbDPMatrix product = SbDPMatrix::identity();
    for (GltfTransform const& transform : transforms.nodes) {
        GltfJson node = GltfJson::object();
        transform.addTo(node);
        product.multLeft(ReadGltf::matrixOf(ReadGltf::Json::parse(node.dump())));
    }
    return product;
}

void expectSame(SbDPMatrix const& one, SbDPMatrix const& other, double error = 1e-12)
{
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(one[row][column], other[row][column], error) << row << ' ' << column;
}

std::string textOf(GltfTransforms const& transforms)
{
    std::string text;
    for (GltfTransform const& transform : transforms.nodes) {
        GltfJson node = GltfJson::object();
        transform.addTo(node);
        text += node.dump();
    }
    return text;
}

} // namespace

TEST(GltfTransforms, AreNoneWhereNothingChanges)
{
    GltfTransforms const transforms(SbDPMatrix::identity());
    EXPECT_TRUE(transforms.nodes.empty());
    EXPECT_FALSE(transforms.isSingular);
}

TEST(GltfTransforms, AreOneForATranslationARotationAndAScale)
{
    EXPECT_EQ(textOf(GltfTransforms(matrixOf({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, 0.5}))),
              R"({"translation":[1.0,2.0,0.5]})");
    EXPECT_EQ(textOf(GltfTransforms(matrixOf({2, 0, 0}, {0, 3, 0}, {0, 0, 0.5}))),
              R"({"scale":[2.0,3.0,0.5]})");
    SbDPMatrix const all = matrixOf({0, 2, 0}, {-3, 0, 0}, {0, 0, 4}, {5, 6, 7});
    GltfTransforms const transforms(all);
    ASSERT_EQ(transforms.nodes.size(), 1U);
    EXPECT_EQ(transforms.nodes[0].scale, SbVec3d(2, 3, 4));
    expectSame(productOf(transforms), all);
}

TEST(GltfTransforms, TurnOneAxisForAMirror)
{
    EXPECT_EQ(textOf(GltfTransforms(matrixOf({-1, 0, 0}, {0, 1, 0}, {0, 0, 1}))),
              R"({"scale":[-1.0,1.0,1.0]})");
    EXPECT_EQ(textOf(GltfTransforms(matrixOf({1, 0, 0}, {0, -1, 0}, {0, 0, 1}))),
              R"({"scale":[1.0,-1.0,1.0]})");
    EXPECT_EQ(textOf(GltfTransforms(matrixOf({1, 0, 0}, {0, 1, 0}, {0, 0, -1}))),
              R"({"scale":[1.0,1.0,-1.0]})");
    SbDPMatrix const turned = matrixOf({0, 0, 2}, {0, 3, 0}, {4, 0, 0});
    GltfTransforms const transforms(turned);
    ASSERT_EQ(transforms.nodes.size(), 1U);
    expectSame(productOf(transforms), turned);
}

/// A node's own matrix mustn't shear, so there are two nodes.
TEST(GltfTransforms, AreTwoWhereTheMatrixShears)
{
    for (SbDPMatrix const& matrix :
         {matrixOf({1, 0, 0}, {0.5, 1, 0}, {0, 0, 1}, {1, 2, 3}), matrixOf({1, 2, 3}, {0, -1, 4}, {5, 6, 0}),
          matrixOf({-1, 0.25, 0}, {0, 1, 0.125}, {0, 0, 1})}) {
        GltfTransforms const transforms(matrix);
        ASSERT_EQ(transforms.nodes.size(), 2U);
        expectSame(productOf(transforms), matrix, 1e-9);
        EXPECT_EQ(transforms.nodes[1].scale, SbVec3d(1, 1, 1)) << "the inner one only turns";
    }
}

TEST(GltfTransforms, AreTwoForAShearOfAnySize)
{
    for (double const size : {1e-4, 1e-2, 1e3, 1e6}) {
        SbDPMatrix const matrix =
            matrixOf(SbVec3d(1, 0, 0) * size, SbVec3d(0.5, 1, 0) * size, SbVec3d(0, 0.25, 1) * size);
        expectSame(productOf(GltfTransforms(matrix)), matrix, 1e-9 * size);
    }
}

TEST(GltfTransforms, TakeNoRoundingOfFloatsForAShear)
{
    EXPECT_EQ(GltfTransforms(matrixOf({1, 1e-7, 0}, {0, 1, 0}, {0, 0, 1})).nodes.size(), 1U);
    EXPECT_EQ(GltfTransforms(matrixOf({1, 1e-5, 0}, {0, 1, 0}, {0, 0, 1})).nodes.size(), 2U);
}

TEST(GltfTransforms, AreNoneForAMatrixThatFlattens)
{
    for (SbDPMatrix const& matrix :
         {matrixOf({1, 0, 0}, {0, 1, 0}, {0, 0, 0}), matrixOf({1, 1, 0}, {2, 2, 0}, {0, 0, 1}),
          matrixOf({0, 0, 0}, {0, 0, 0}, {0, 0, 0}), matrixOf({1, 0, 0}, {1, 1e-12, 0}, {0, 0, 1})}) {
        GltfTransforms const transforms(matrix);
        EXPECT_TRUE(transforms.isSingular);
        EXPECT_TRUE(transforms.nodes.empty());
    }
}
