#include "visual/FltFileTextures.h"

#include <gtest/gtest.h>

namespace
{

class FltFileTexturesTest : public testing::Test
{
protected:
    FltFileTexturesTest() { palettes.textures->names = {{4, "four.rgb"}, {7, "seven.rgb"}}; }

    FltMesh named(FltAppearance const& appearance)
    {
        FltMesh mesh;
        textures.nameThem(mesh, appearance);
        return mesh;
    }

    FltPaletteSet palettes{"town.flt"};
    std::vector<FltTexture> list{1};
    FltFileTextures textures{palettes, list};
};

} // namespace

TEST_F(FltFileTexturesTest, KnowsWhatThePaletteHas)
{
    EXPECT_TRUE(textures.has(4));
    EXPECT_FALSE(textures.has(5));
    EXPECT_FALSE(textures.has(-1));
    EXPECT_EQ(list.size(), 1U);
}

TEST_F(FltFileTexturesTest, ListsATextureWhenAMeshUsesIt)
{
    FltAppearance appearance;
    EXPECT_EQ(named(appearance).texture, FltMesh::none);
    appearance.texture = 7;
    EXPECT_EQ(named(appearance).texture, 1);
    EXPECT_EQ(named(appearance).texture, 1);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1].name, "seven.rgb");
    EXPECT_EQ(list[1].written, "seven.rgb");
    EXPECT_EQ(list[1].database, "town.flt");
}

TEST_F(FltFileTexturesTest, NumbersListsOfFurtherTextures)
{
    std::int32_t const one = textures.layersNumber({{1, 4}, {3, 7}});
    std::int32_t const other = textures.layersNumber({{1, 4}});
    EXPECT_NE(one, other);
    EXPECT_EQ(textures.layersNumber({{1, 4}, {3, 7}}), one);
    EXPECT_NE(textures.layersNumber({{2, 4}}), other);
    FltAppearance appearance;
    appearance.layers = one;
    FltMesh const mesh = named(appearance);
    ASSERT_EQ(mesh.layers.size(), 2U);
    EXPECT_EQ(mesh.layers[0].number, 1);
    EXPECT_EQ(mesh.layers[1].number, 3);
    EXPECT_EQ(list[static_cast<std::size_t>(mesh.layers[1].texture)].name, "seven.rgb");
}
