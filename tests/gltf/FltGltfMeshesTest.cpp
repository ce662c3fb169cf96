#include "gltf/FltGltfMeshes.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

/// The meshes of nodes in a document.
class FltGltfMeshesTest : public testing::Test
{
protected:
    static FltMesh triangles(std::size_t corners)
    {
        FltMesh mesh;
        mesh.isLit = false;
        mesh.colors = {~0U};
        for (std::size_t i = 0; i < corners; ++i) {
            std::size_t const row = i / 256;
            mesh.positions.emplace_back(static_cast<float>(i % 256), static_cast<float>(row), 0.0F);
        }
        for (std::size_t i = 2; i < corners; i += 3) {
            for (std::size_t corner = i - 2; corner <= i; ++corner)
                mesh.indices.push_back(static_cast<std::int32_t>(corner));
            mesh.indices.push_back(FltMesh::end);
        }
        return mesh;
    }

    std::vector<FltGltfMeshes::Written> write(FltVisualNode const& node,
                                              FltGltfMeshes::Place const& place = {})
    {
        return meshes.of(node, place, keepsHidden);
    }

    std::string text() { return document.text(0); }

    std::size_t countOf(std::string const& part)
    {
        std::size_t count = 0;
        std::string const all = text();
        for (std::size_t at = all.find(part); at != std::string::npos; at = all.find(part, at + 1))
            ++count;
        return count;
    }

    GltfDocument document;
    std::vector<FltTexture> textures;
    GltfPicture::Source source;
    FltGltfLosses losses;
    FltGltfTextures gltfTextures{document, textures, source,
                                 [](GltfPicture const&, std::string const&) { return ""; }};
    FltGltfMaterials materials{document, gltfTextures, losses};
    FltGltfMeshes meshes{document, materials, losses};
    bool keepsHidden = false;
};

} // namespace

/// The last number of 16 bits stands for something else.
TEST_F(FltGltfMeshesTest, HaveNoMoreCornersThan16BitsCanNumber)
{
    FltVisualNode node;
    node.meshes = {triangles(65535)};
    ASSERT_EQ(write(node).size(), 1U);
    EXPECT_EQ(countOf("\"POSITION\""), 1U);
    EXPECT_EQ(countOf("\"count\":65535"), 2U) << text();
    FltVisualNode larger;
    larger.meshes = {triangles(65538)};
    ASSERT_EQ(write(larger).size(), 1U) << "one mesh of several parts";
    EXPECT_EQ(countOf("\"POSITION\""), 3U);
    EXPECT_EQ(countOf("\"count\":65538"), 0U);
    EXPECT_EQ(meshes.vertices(), 65535U + 65538U);
}

TEST_F(FltGltfMeshesTest, AreOneForAllAppearancesOfANode)
{
    FltVisualNode node;
    node.name = "house";
    node.meshes = {triangles(3), triangles(6)};
    node.meshes[1].colors = {0xff0000ff};
    auto const written = write(node);
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written[0].triangles, 3U);
    EXPECT_EQ(countOf("\"material\""), 2U);
    EXPECT_NE(text().find("\"name\":\"house\""), std::string::npos);
}

TEST_F(FltGltfMeshesTest, StandByThemselvesWhereFloatsDoNotHoldThem)
{
    FltVisualNode node;
    node.meshes = {triangles(3), triangles(3)};
    node.meshes[1].origin = SbVec3d(30000001, 0, 0);
    node.meshes[1].positions[1] = SbVec3f(0.125F, 0, 0);
    auto const written = write(node);
    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written[0].stand, SbVec3d(0, 0, 0));
    EXPECT_NEAR(written[1].stand[0], 30000001, 2);
}

TEST_F(FltGltfMeshesTest, OfSharedNodesAreThereOnce)
{
    FltVisualNode node;
    node.meshes = {triangles(3)};
    FltGltfMeshes::Place place;
    place.isShared = true;
    EXPECT_EQ(write(node, place)[0].number, write(node, place)[0].number);
    place.zero = SbVec3d(1, 0, 0);
    EXPECT_NE(write(node, place)[0].number, write(node)[0].number);
}

/// Faces that lie on others are at most five centimetres in front of them, whatever the unit is.
TEST_F(FltGltfMeshesTest, AreLiftedFromWhatTheyLieOnByTheExtentOfAll)
{
    FltVisualNode node;
    node.meshes = {triangles(3), triangles(3)};
    node.meshes[0].positions = {{0, 0, 0}, {100, 0, 0}, {0, 20, 0}};
    node.meshes[1].positions = {{0, 0, 0}, {2, 0, 0}, {0, 1, 0}};
    node.meshes[1].level = 1;
    FltGltfMeshes::Place place;
    write(node, place);
    EXPECT_NE(text().find("\"max\":[2.0,1.0,0.05"), std::string::npos) << text();
    node.meshes[0].positions[1][0] = 16;
    node.meshes[0].positions[2][1] = 16;
    write(node, place);
    EXPECT_NE(text().find("\"max\":[2.0,1.0,0.008"), std::string::npos) << "a 2000th of sixteen";
    place.isLifted = false;
    write(node, place);
    EXPECT_NE(text().find("\"max\":[2.0,1.0,0.0]"), std::string::npos);
    node.meshes[0].positions[1][0] = 100000;
    place.isLifted = true;
    place.metresPerUnit = 0.01;
    write(node, place);
    EXPECT_NE(text().find("\"max\":[2.0,1.0,5.0]"), std::string::npos) << "centimetres";
}

/// Numbers of corners have few bits, and a node of their own leads back from these.
TEST_F(FltGltfMeshesTest, AreRoundedIfThatIsWanted)
{
    FltGltfMeshes rounding(document, materials, losses, true);
    FltVisualNode node;
    node.meshes = {triangles(3), triangles(3)};
    node.meshes[0].positions = {{0, 0, 0}, {100, 0, 0}, {0, 20, 0}};
    node.meshes[1].positions = {{-31, 0, 0}, {2, 0, 0}, {0, 1, 0}};
    node.meshes[1].normals = {{0, 0, 1}, {0, -1, 0}, {1, 0, 0}};
    node.meshes[1].isLit = true;
    auto const written = rounding.of(node, {}, false);
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written[0].stand, SbVec3d(-31, 0, 0)) << "one grid for the whole node";
    EXPECT_NEAR(written[0].step, 131. / 65535, 1e-12);
    EXPECT_FALSE(written[0].isRightIn());
    EXPECT_NE(text().find("\"extensionsRequired\":[\"KHR_mesh_quantization\"]"), std::string::npos);
    EXPECT_NE(text().find("\"max\":[65535,10005,0]"), std::string::npos) << text();
    EXPECT_EQ(countOf("\"componentType\":5126"), 0U) << "no floats";
    EXPECT_EQ(countOf("\"byteStride\":4"), 1U) << "of normals, by a byte each";
}

/// A node of their own is left out only where they stand at zero, count in its units and are to be seen.
TEST_F(FltGltfMeshesTest, StandRightInTheirNodeWithNothingBetween)
{
    FltGltfMeshes::Written mesh = {};
    mesh.step = 1;
    EXPECT_TRUE(mesh.isRightIn());
    FltGltfMeshes::Written other = mesh;
    other.stand = SbVec3d(1, 0, 0);
    EXPECT_FALSE(other.isRightIn());
    other = mesh;
    other.step = 0.5;
    EXPECT_FALSE(other.isRightIn());
    other = mesh;
    other.isHidden = true;
    EXPECT_FALSE(other.isRightIn());
}

TEST_F(FltGltfMeshesTest, ThatAreHiddenAreLeftOutOrMarked)
{
    FltVisualNode node;
    node.meshes = {triangles(3)};
    node.meshes[0].isHidden = true;
    EXPECT_TRUE(write(node).empty());
    ASSERT_EQ(losses.list().size(), 1U);
    EXPECT_EQ(losses.list()[0].kind, "hidden parts");
    keepsHidden = true;
    ASSERT_EQ(write(node).size(), 1U);
    EXPECT_TRUE(write(node)[0].isHidden);
}

TEST_F(FltGltfMeshesTest, WithoutAnythingToDrawAreNone)
{
    FltVisualNode node;
    node.meshes = {FltMesh(), triangles(3)};
    node.meshes[1].positions[0][0] = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(write(node).empty());
    EXPECT_EQ(losses.list()[0].count, 1U);
}
