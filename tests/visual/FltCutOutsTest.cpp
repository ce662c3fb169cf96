#include "visual/FltCutOuts.h"

#include <gtest/gtest.h>

namespace
{

FltTexture texture(std::vector<unsigned char> const& pixels, int components = 4)
{
    FltTexture made;
    made.pixels = std::make_shared<PicturePixels const>(
        PicturePixels{static_cast<int>(pixels.size()) / components, 1, components, pixels});
    return made;
}

enum Number : std::int32_t { leaves, glass, bricks, missing };

class FltCutOutsTest : public testing::Test
{
protected:
    FltCutOutsTest()
    {
        mesh.isBlended = true;
        mesh.texture = leaves;
        mesh.colors = {0x10ff20ff};
    }

    /// The mesh as it is marked.
    FltMesh marked() const
    {
        auto const root = std::make_shared<FltVisualNode>();
        root->children = {nullptr, std::make_shared<FltVisualNode>()};
        root->children[1]->meshes = {mesh};
        FltCutOuts::mark(root, textures);
        return root->children[1]->meshes[0];
    }

    bool isCutOut() const
    {
        FltMesh const after = marked();
        EXPECT_EQ(after.isBlended, mesh.isBlended && !after.isCutOut);
        return after.isCutOut;
    }

    std::vector<FltTexture> const textures = {texture({9, 9, 9, 255, 9, 9, 9, 0}),
                                              texture({9, 9, 9, 120, 9, 9, 9, 0}),
                                              texture({9, 9, 9, 9, 9, 9}, 3), FltTexture()};
    FltMesh mesh;
};

} // namespace

TEST_F(FltCutOutsTest, AreOpaqueFacesWhosePictureIsThereOrNot)
{
    EXPECT_TRUE(isCutOut());
    mesh.colors = {0x10ff20ff, 0xffffffff};
    EXPECT_TRUE(isCutOut());
    mesh.colors.clear();
    EXPECT_TRUE(isCutOut());
}

TEST_F(FltCutOutsTest, HaveNoColorThatLetsThrough)
{
    mesh.colors = {0xffffffff, 0xffffff80};
    EXPECT_FALSE(isCutOut());
}

TEST_F(FltCutOutsTest, HaveAPictureThatCounts)
{
    mesh.isBlended = false;
    EXPECT_FALSE(isCutOut());
    mesh.isBlended = true;
    for (std::int32_t const other : {static_cast<std::int32_t>(glass), static_cast<std::int32_t>(bricks),
                                     static_cast<std::int32_t>(missing), FltMesh::none}) {
        mesh.texture = other;
        EXPECT_FALSE(isCutOut()) << other;
    }
}

TEST_F(FltCutOutsTest, HaveNoFurtherTextureThatLetsThrough)
{
    mesh.layers = {{1, bricks, {}}, {2, leaves, {}}};
    EXPECT_TRUE(isCutOut());
    mesh.layers.push_back({3, glass, {}});
    EXPECT_FALSE(isCutOut());
}

TEST_F(FltCutOutsTest, AreMarkedOnceWhereManyPlacesShareThem)
{
    auto root = std::make_shared<FltVisualNode>();
    root->meshes = {mesh};
    auto const bottom = root;
    for (int level = 0; level < 60; ++level) {
        auto above = std::make_shared<FltVisualNode>();
        above->children = {root, root};
        root = above;
    }
    FltCutOuts::mark(root, textures);
    EXPECT_TRUE(bottom->meshes[0].isCutOut);
}
