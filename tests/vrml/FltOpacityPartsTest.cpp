#include "vrml/FltOpacityParts.h"

#include <gtest/gtest.h>

namespace
{

/// Three triangles of corners of their own, of these colours each.
FltMesh triangles(std::vector<std::uint32_t> const& colors)
{
    FltMesh mesh;
    for (std::int32_t i = 0; i < 9; ++i) {
        mesh.positions.emplace_back(static_cast<float>(i), 0.0F, 0.0F);
        mesh.uvs.emplace_back(static_cast<float>(i), 1.0F);
        mesh.colors.push_back(colors[static_cast<std::size_t>(i / 3)]);
        mesh.indices.push_back(i);
        if (i % 3 == 2)
            mesh.indices.push_back(FltMesh::end);
    }
    return mesh;
}

} // namespace

TEST(FltOpacityParts, leaveAMeshOfOneOpacityAsItIs)
{
    FltOpacityParts const parts(triangles({0xff0000ff, 0x00ff00ff, 0x0000ffff}));
    ASSERT_EQ(parts.parts.size(), 1U);
    EXPECT_EQ(parts.parts[0].positions.size(), 9U);
    EXPECT_EQ(parts.levelledOut, 0U);
    EXPECT_EQ(FltOpacityParts(FltMesh()).parts.size(), 1U);
}

TEST(FltOpacityParts, holdTheFacesOfOneOpacityEach)
{
    FltOpacityParts const parts(triangles({0xff000080, 0x00ff00ff, 0x0000ff80}));
    ASSERT_EQ(parts.parts.size(), 2U);
    EXPECT_EQ(FltOpacityParts::of(parts.parts[0]), 255U);
    EXPECT_EQ(parts.parts[0].positions[0], SbVec3f(3, 0, 0));
    EXPECT_EQ(parts.parts[0].uvs[2], SbVec2f(5, 1));
    EXPECT_EQ(parts.parts[0].colors, std::vector<std::uint32_t>{0x00ff00ff}) << "one for all corners";
    EXPECT_EQ(FltOpacityParts::of(parts.parts[1]), 0x80U);
    EXPECT_EQ(parts.parts[1].indices, (std::vector<std::int32_t>{0, 1, 2, -1, 3, 4, 5, -1}));
    EXPECT_EQ(parts.parts[1].colors.size(), 6U);
    EXPECT_EQ(parts.levelledOut, 0U);
}

TEST(FltOpacityParts, takeTheMeanOfAFaceThatIsClearInPart)
{
    FltMesh mesh = triangles({0xff0000ff, 0xff0000ff, 0xff0000ff});
    mesh.colors[8] = 0xff000000;
    FltOpacityParts const parts(mesh);
    ASSERT_EQ(parts.parts.size(), 2U);
    EXPECT_EQ(FltOpacityParts::of(parts.parts[1]), 170U);
    EXPECT_EQ(parts.levelledOut, 1U);
}

TEST(FltOpacityParts, shareACornerThatHasAPlaceInSeveral)
{
    for (std::size_t const place : {4U, 5U, 6U}) {
        FltMesh mesh = triangles({0xff000040, 0x00ff00ff, 0x00ff00ff});
        mesh.indices[place] = 2; // of the first face, in the second
        FltOpacityParts const parts(mesh);
        ASSERT_EQ(parts.parts.size(), 3U);
        for (FltMesh const& part : parts.parts) {
            EXPECT_EQ(part.positions.size(), 3U);
            EXPECT_EQ(part.indices, (std::vector<std::int32_t>{0, 1, 2, -1}));
        }
    }
}

TEST(FltOpacityParts, areMadeOfPointsToo)
{
    FltMesh mesh;
    mesh.kind = FltMesh::Kind::points;
    mesh.positions.resize(3);
    mesh.colors = {0xffffffff, 0xffffff10, 0xffffffff};
    FltOpacityParts const parts(mesh);
    ASSERT_EQ(parts.parts.size(), 2U);
    EXPECT_EQ(parts.parts[0].positions.size(), 2U);
    EXPECT_TRUE(parts.parts[0].indices.empty());
}
