#include "obj/ObjMaterials.h"

#include "ObjOfVisual.h"
#include "support/Text.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

FltTexture texture(std::string const& name, bool isThere = true)
{
    FltTexture made;
    made.name = name;
    if (isThere)
        made.pixels = std::make_shared<PicturePixels const>(
            PicturePixels{1, 2, 4, std::vector<unsigned char>{10, 20, 30, 40, 50, 60, 70, 80}});
    return made;
}

FltMesh textured(std::int32_t number)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.texture = number;
    mesh.uvs.resize(3);
    return mesh;
}

/// The materials of one mesh.
std::string materialOf(FltMesh const& mesh, std::vector<FltTexture> const& textures = {})
{
    ObjOfVisual obj;
    obj.visual.textures = textures;
    obj.add({mesh});
    obj.write();
    return obj.materials();
}

} // namespace

TEST(ObjMaterials, haveTheColourOfTheCornersAlone)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.colors = {0x33669980};
    EXPECT_EQ(materialOf(mesh), "newmtl material1\nKd 0.2 0.4 0.6\nd 1\nillum 0\n");
    mesh.colors.clear();
    EXPECT_EQ(materialOf(mesh), "newmtl material1\nKd 1 1 1\nd 1\nillum 0\n");
}

TEST(ObjMaterials, loseTheColoursOfSingleCorners)
{
    auto const losses = [](FltMesh const& mesh) {
        ObjOfVisual obj;
        obj.add({mesh});
        return obj.write().omissions.size();
    };
    FltMesh mesh = ObjOfVisual::triangle();
    for (std::size_t const colors : {0U, 1U, 3U}) {
        mesh.colors.assign(colors, 0xff0000ff);
        EXPECT_EQ(losses(mesh), colors > 1 ? 1U : 0U) << colors;
    }
    mesh.kind = FltMesh::Kind::lines;
    mesh.positions.pop_back();
    mesh.indices = {0, 1, FltMesh::end};
    mesh.colors = {0xff0000ff};
    std::size_t const ofOneColor = losses(mesh);
    mesh.colors = {0xff0000ff, 0x00ff00ff};
    EXPECT_EQ(losses(mesh), ofOneColor + 1) << "a line from one colour to another";
}

TEST(ObjMaterials, areAsClearAsTheCornersWhereTheyAreBlended)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.isBlended = true;
    mesh.colors = {0x00000033};
    EXPECT_TRUE(holds(materialOf(mesh), "\nd 0.2\n"));
}

TEST(ObjMaterials, shineWhereTheyAreLit)
{
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.isLit = true;
    mesh.material.specular = SbColor(0.5F, 0.25F, 0.125F);
    mesh.material.emissive = SbColor(0, 0.5F, 1);
    mesh.material.shininess = 0.5F;
    EXPECT_EQ(materialOf(mesh),
              "newmtl material1\nKd 1 0 0\nKs 0.5 0.25 0.125\nNs 64\nKe 0 0.5 1\nd 1\nillum 2\n");
    mesh.kind = FltMesh::Kind::lines;
    EXPECT_EQ(materialOf(mesh), "newmtl material1\nKd 1 0 0\nd 1\nillum 0\n") << "lines are never lit";
}

TEST(ObjMaterials, haveTheMeanOfManyColoursAndTellThatTheyAreLost)
{
    ObjOfVisual obj;
    FltMesh mesh = ObjOfVisual::triangle();
    obj.add({mesh});
    EXPECT_TRUE(obj.write().omissions.empty());
    mesh.colors = {0x99000000, 0x00990000, 0x99990000};
    obj.add({mesh});
    FltGltfReport const report = obj.write();
    EXPECT_TRUE(holds(obj.materials(), "Kd 0.4 0.4 0\n")) << obj.materials();
    ASSERT_EQ(report.omissions.size(), 1U);
    EXPECT_EQ(report.omissions[0].kind, "colours of single corners");
    EXPECT_EQ(report.omissions[0].count, 1U);
}

TEST(ObjMaterials, stayOneForMeshesThatLookAlike)
{
    ObjOfVisual obj;
    FltMesh other = ObjOfVisual::triangle();
    other.colors = {0x00ff00ff};
    obj.add({ObjOfVisual::triangle(), other, ObjOfVisual::triangle()});
    EXPECT_EQ(obj.write().materials, 2U);
    EXPECT_EQ(obj.materials(), "newmtl material1\nKd 1 0 0\nd 1\nillum 0\n"
                               "newmtl material2\nKd 0 1 0\nd 1\nillum 0\n");
    std::string const text = obj.text();
    EXPECT_LT(text.find("usemtl material2"), text.rfind("usemtl material1"));
}

TEST(ObjMaterials, namePicturesByTheirPathsAsTheyAre)
{
    ObjOfVisual obj;
    obj.name = "my 100% model";
    obj.visual.textures = {texture("C:\\pictures\\big roof.rgb")};
    obj.add({textured(0)});
    FltGltfReport const report = obj.write();
    EXPECT_TRUE(holds(obj.materials(), "\nmap_Kd my 100% model_textures/big_roof.png\n")) << obj.materials();
    EXPECT_TRUE(std::filesystem::exists(obj.folder / "my 100% model_textures/big_roof.png"));
    EXPECT_FALSE(holds(obj.materials(), "map_d"));
    EXPECT_EQ(report.images, 1U);
    EXPECT_TRUE(report.missingTextures.empty());
}

TEST(ObjMaterials, takeTheAlphaOfPicturesWhereItCounts)
{
    std::string const mapped = "\nmap_Kd m_textures/a.png\nmap_d m_textures/a.png\n";
    FltMesh mesh = textured(0);
    mesh.isCutOut = true;
    EXPECT_TRUE(holds(materialOf(mesh, {texture("a")}), mapped));
    mesh.isCutOut = false;
    mesh.isBlended = true;
    EXPECT_TRUE(holds(materialOf(mesh, {texture("a")}), mapped));
    mesh.ignoresTextureAlpha = true;
    std::string const text = materialOf(mesh, {texture("a")});
    EXPECT_TRUE(holds(text, "\nmap_Kd m_textures/a.png\n"));
    EXPECT_FALSE(holds(text, "map_d")) << text;
}

TEST(ObjMaterials, writeAPictureOnceForEachUseOfItsAlpha)
{
    ObjOfVisual obj;
    obj.visual.textures = {texture("a"), texture("b")};
    obj.visual.textures[1].pixels = obj.visual.textures[0].pixels;
    FltMesh clear = textured(0);
    clear.isBlended = true;
    FltMesh opaque = clear;
    opaque.ignoresTextureAlpha = true;
    obj.add({textured(0), textured(1), clear, opaque});
    FltGltfReport const report = obj.write();
    EXPECT_EQ(report.images, 2U);
    EXPECT_TRUE(holds(obj.materials(), "map_Kd m_textures/a-2.png\n")) << obj.materials();
    EXPECT_EQ(report.files.size(), 4U);
}

TEST(ObjMaterials, tellWhichPicturesAreMissing)
{
    ObjOfVisual obj;
    obj.visual.textures = {texture("gone.rgb", false), texture("", false)};
    obj.add({textured(0), textured(0), textured(1)});
    FltGltfReport const report = obj.write();
    EXPECT_EQ(report.missingTextures, std::vector<std::string>{"gone.rgb"});
    EXPECT_EQ(report.images, 0U);
    EXPECT_FALSE(holds(obj.materials(), "map_Kd"));
    EXPECT_FALSE(holds(obj.text(), "vt ")) << "nothing needs them";
}

TEST(ObjMaterials, haveAPictureOnlyWhereItHasAPlaceOnFaces)
{
    FltMesh lines = textured(0);
    lines.kind = FltMesh::Kind::lines;
    EXPECT_FALSE(holds(materialOf(lines, {texture("a")}), "map_Kd"));
    FltMesh placeless = textured(0);
    placeless.uvs.clear();
    EXPECT_FALSE(holds(materialOf(placeless, {texture("a")}), "map_Kd"));
}

TEST(ObjMaterials, tellOfTheLayersThatTheyLack)
{
    ObjOfVisual obj;
    FltMesh mesh = ObjOfVisual::triangle();
    mesh.layers.resize(2);
    obj.add({mesh});
    FltGltfReport const report = obj.write();
    ASSERT_EQ(report.omissions.size(), 1U);
    EXPECT_EQ(report.omissions[0].kind, "further texture layers");
    EXPECT_EQ(report.omissions[0].count, 2U);
}
