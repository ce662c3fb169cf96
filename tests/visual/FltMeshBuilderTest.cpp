#include "visual/FltMeshBuilder.h"

#include <gtest/gtest.h>

namespace
{

using Corner = FltMeshBuilder::Corner;

FltAppearance litAndTextured()
{
    FltAppearance appearance;
    appearance.texture = 2;
    return appearance;
}

Corner cornerAt(float x, std::uint32_t color = FltColors::white)
{
    Corner corner;
    corner.position = SbVec3d(static_cast<double>(x), 0, 0);
    corner.uv = SbVec2f(x, 1);
    corner.color = color;
    return corner;
}

} // namespace

TEST(FltMeshBuilder, keepsOfACornerWhatTheAppearanceNeeds)
{
    FltMeshBuilder builder(litAndTextured());
    EXPECT_EQ(builder.addCorner(cornerAt(1), SbColor(1, 1, 1)), 0);
    EXPECT_EQ(builder.addCorner(cornerAt(2), SbColor(1, 1, 1)), 1);
    FltMesh const mesh = builder.finish(nullptr);
    EXPECT_EQ(mesh.positions, (std::vector<SbVec3f>{{1, 0, 0}, {2, 0, 0}}));
    EXPECT_EQ(mesh.normals.size(), 2U);
    EXPECT_EQ(mesh.uvs, (std::vector<SbVec2f>{{1, 1}, {2, 1}}));

    FltAppearance unlit;
    unlit.isLit = false;
    FltMeshBuilder plain(unlit);
    plain.addCorner(cornerAt(1), SbColor(1, 1, 1));
    FltMesh const plainMesh = plain.finish(nullptr);
    EXPECT_TRUE(plainMesh.normals.empty());
    EXPECT_TRUE(plainMesh.uvs.empty());
}

TEST(FltMeshBuilder, keepsOneColourWhereAllCornersHaveIt)
{
    for (std::uint32_t const last : {0x102030ffU, 0x102030feU}) {
        FltMeshBuilder builder{FltAppearance()};
        builder.addCorner(cornerAt(1, 0x102030ff), SbColor(1, 1, 1));
        builder.addCorner(cornerAt(2, 0x102030ff), SbColor(1, 1, 1));
        builder.addCorner(cornerAt(3, last), SbColor(1, 1, 1));
        EXPECT_EQ(builder.finish(nullptr).colors.size(), last == 0x102030ff ? 1U : 3U);
    }
}

TEST(FltMeshBuilder, findsCornersThatLookAlikeWhereverTheyStand)
{
    FltMeshBuilder builder(litAndTextured());
    builder.addCorner(cornerAt(1), SbColor(1, 1, 1));
    Corner other = cornerAt(1);
    other.position = SbVec3d(9, 9, 9);
    EXPECT_TRUE(builder.looksAlike(0, other));
    Corner coloured = other, turned = other, moved = other;
    coloured.color = 0;
    turned.normal = SbVec3f(1, 0, 0);
    moved.uv = SbVec2f(0, 0);
    EXPECT_FALSE(builder.looksAlike(0, coloured));
    EXPECT_FALSE(builder.looksAlike(0, turned));
    EXPECT_FALSE(builder.looksAlike(0, moved));

    FltAppearance bare;
    bare.isLit = false;
    FltMeshBuilder plain(bare);
    plain.addCorner(cornerAt(1), SbColor(1, 1, 1));
    EXPECT_TRUE(plain.looksAlike(0, turned));
    EXPECT_TRUE(plain.looksAlike(0, moved));
}

TEST(FltMeshBuilder, takesTheMeanOfTheAmbientLightOfAllCorners)
{
    FltMeshBuilder builder{FltAppearance()};
    builder.addCorner(cornerAt(1), SbColor(1, 0, 0.5F));
    builder.addCorner(cornerAt(2), SbColor(0, 0, 0.25F));
    FltMesh const mesh = builder.finish(nullptr);
    EXPECT_EQ(mesh.material.ambient, SbColor(0.5F, 0, 0.375F));
    EXPECT_FALSE(mesh.material.isFromPalette);
}

TEST(FltMeshBuilder, keepsPartsOfMaterialsBetween0And1)
{
    FltMaterialValues values;
    values.specular[0] = 2;
    values.specular[1] = -1;
    values.specular[2] = 0.5F;
    values.emissive[0] = 0.25F;
    for (auto const& [stored, kept] :
         {std::pair{64.0F, 0.5F}, {0.5F, 0.5F / 128}, {200.0F, 1.0F}, {-3.0F, 0.0F}}) {
        values.shininess = stored;
        FltMeshBuilder builder{FltAppearance()};
        builder.addCorner(cornerAt(1), SbColor(1, 1, 1));
        FltMesh::Material const material = builder.finish(&values).material;
        EXPECT_TRUE(material.isFromPalette);
        EXPECT_EQ(material.specular, SbColor(1, 0, 0.5F));
        EXPECT_EQ(material.emissive, SbColor(0.25F, 0, 0));
        EXPECT_EQ(material.shininess, kept);
    }
}

TEST(FltMeshBuilder, hasNoMaterialWhereNoLightFalls)
{
    FltAppearance unlit;
    unlit.isLit = false;
    FltMaterialValues values;
    values.emissive[0] = 1;
    FltMeshBuilder builder(unlit);
    builder.addCorner(cornerAt(1), SbColor(1, 1, 1));
    EXPECT_FALSE(builder.finish(&values).material.isFromPalette);
}

TEST(FltMeshBuilder, hasCoordinatesOfEachLayerForEachCorner)
{
    FltMeshBuilder builder{FltAppearance()};
    builder.addCorner(cornerAt(1), SbColor(1, 1, 1));
    builder.addLayerUv(0, SbVec2f(1, 2));
    builder.addCorner(cornerAt(2), SbColor(1, 1, 1));
    builder.addLayerUv(1, SbVec2f(3, 4));
    FltMesh const mesh = builder.finish(nullptr);
    ASSERT_EQ(mesh.layers.size(), 2U);
    EXPECT_EQ(mesh.layers[0].uvs, (std::vector<SbVec2f>{{1, 2}, {0, 0}}));
    EXPECT_EQ(mesh.layers[1].uvs, (std::vector<SbVec2f>{{0, 0}, {3, 4}}));
}

TEST(FltMeshBuilder, takesOverWhatTheAppearanceSays)
{
    FltAppearance appearance;
    appearance.kind = FltMesh::Kind::lines;
    appearance.isLit = false;
    appearance.isTwoSided = appearance.isBlended = appearance.ignoresTextureAlpha = true;
    appearance.isHidden = appearance.isOutlined = true;
    appearance.level = 3;
    appearance.size = 5;
    FltMesh const mesh = FltMeshBuilder(appearance).finish(nullptr);
    EXPECT_EQ(mesh.kind, FltMesh::Kind::lines);
    EXPECT_FALSE(mesh.isLit);
    EXPECT_TRUE(mesh.isTwoSided && mesh.isBlended && mesh.ignoresTextureAlpha);
    EXPECT_TRUE(mesh.isHidden && mesh.isOutlined);
    EXPECT_EQ(mesh.level, 3);
    EXPECT_EQ(mesh.size, 5);
}

TEST(FltMeshBuilder, countsCornersFromAnOriginThatFloatsDontHold)
{
    FltMeshBuilder builder{FltAppearance()};
    for (double const x : {4500000.1, 4500000.2}) {
        Corner corner;
        corner.position = SbVec3d(x, 0, 0);
        builder.addCorner(corner, SbColor(1, 1, 1));
    }
    FltMesh const mesh = builder.finish(nullptr);
    EXPECT_NE(mesh.origin, SbVec3d(0, 0, 0));
    EXPECT_NEAR(mesh.origin[0] + static_cast<double>(mesh.positions.at(0)[0]), 4500000.1, 1e-7);
    EXPECT_NEAR(mesh.origin[0] + static_cast<double>(mesh.positions.at(1)[0]), 4500000.2, 1e-7);
}
