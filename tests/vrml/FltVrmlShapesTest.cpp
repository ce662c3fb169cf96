#include "vrml/FltVrmlShapes.h"

#include "support/MemoryStream.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace
{

class FltVrmlShapesTest : public testing::Test
{
protected:
    /// What is written for a mesh or a text.
    template <class Part>
    std::string written(Part const& part, FltVrmlPlace const& place = {})
    {
        MemoryStream const stream;
        {
            VrmlText text(stream);
            VrmlNames names;
            FltVisualNode root;
            root.meshes = {textured()};
            FltVrmlPictures pictures(root, textures);
            for (FltVrmlPicture& picture : pictures.list)
                picture.url = "a.png";
            lost.clear();
            FltVrmlShapes(text, names, pictures, [this](std::string_view kind, std::uint64_t count) {
                lost[std::string(kind)] += count;
            }).write(part, place);
        }
        std::string all = stream.text();
        EXPECT_EQ(std::count(all.begin(), all.end(), '{'), std::count(all.begin(), all.end(), '}'));
        return all;
    }

    static FltMesh triangle()
    {
        FltMesh mesh;
        mesh.positions = {{1, 0, 0}, {2, 0, 0}, {1, 0, 1}};
        mesh.normals = {{1, 0, 0}, {0, -1, 0}, {0, -1, 0}};
        mesh.indices = {0, 1, 2, FltMesh::end};
        mesh.colors = {0x8000ffff};
        mesh.material.ambient = {0.25F, 0, 0.5F};
        return mesh;
    }

    static FltMesh unlit()
    {
        FltMesh mesh = triangle();
        mesh.isLit = false;
        mesh.normals.clear();
        return mesh;
    }

    static FltMesh textured()
    {
        FltMesh mesh = unlit();
        mesh.texture = 0;
        mesh.uvs = {{0, 0}, {1, 0}, {0, 1}};
        mesh.colors = {~0U};
        return mesh;
    }

    /// Whether all of these stand in a text, in this order.
    static bool holds(std::string const& text, std::vector<std::string> const& parts)
    {
        std::size_t at = 0;
        for (std::string const& part : parts)
            if ((at = text.find(part, at)) == std::string::npos)
                return false;
        return true;
    }

    static FltTexture texture()
    {
        FltTexture made;
        made.path = made.written = "a.png";
        made.pixels = std::make_shared<PicturePixels const>(PicturePixels{1, 1, 3, {1, 2, 3}});
        return made;
    }

    std::vector<FltTexture> textures = {texture()};
    std::map<std::string, std::uint64_t> lost;
};

} // namespace

TEST_F(FltVrmlShapesTest, haveTheirMaterialAndNormalsIfTheyAreLit)
{
    FltMesh mesh = triangle();
    mesh.material.isFromPalette = true;
    mesh.material.specular = {1, 1, 1};
    mesh.material.shininess = 0.5F;
    std::string const text = written(mesh);
    EXPECT_TRUE(
        holds(text, {"Shape {", "diffuseColor 0.5019608 0 1\n", "ambientIntensity 0.49", "shininess 0.5\n",
                     "specularColor 1 1 1\n", "emissiveColor 0 0 0\n", "solid TRUE", "1 0 0, 2 0 0, 1 0 1",
                     "vector [", "1 0 0, 0 -1 0", "coordIndex [", "0, 1, 2, -1"}))
        << text;
    EXPECT_EQ(text.find("transparency"), std::string::npos);
    EXPECT_TRUE(lost.empty());
}

TEST_F(FltVrmlShapesTest, areBlackInAmbientLightIfTheyAreBlack)
{
    FltMesh mesh = triangle();
    mesh.colors = {0x000000ff};
    EXPECT_TRUE(holds(written(mesh), {"diffuseColor 0 0 0\n", "ambientIntensity 0\n"}));
    mesh.colors = {0x010101ff, 0x010101ff, 0x010101ff};
    EXPECT_TRUE(holds(written(mesh), {"ambientIntensity 1\n"})) << "no more than all of it";
}

TEST_F(FltVrmlShapesTest, haveTheAmbientLightOfAllTheirColours)
{
    FltMesh mesh = triangle();
    mesh.colors = {0xff0000ff, 0xffff00ff, 0xffffffff};
    mesh.material.ambient = {0.5F, 0.25F, 0.25F};
    EXPECT_TRUE(holds(written(mesh), {"ambientIntensity 0.5\n"})) << written(mesh);
}

TEST_F(FltVrmlShapesTest, shineInOneColourWithoutNormalsIfTheyAreUnlit)
{
    std::string const text = written(unlit());
    EXPECT_TRUE(holds(text, {"diffuseColor 0 0 0\n", "emissiveColor 0.5019608 0 1\n"})) << text;
    EXPECT_EQ(text.find("Normal"), std::string::npos);
    FltMesh clear = unlit();
    clear.colors = {0xffffff33};
    EXPECT_TRUE(holds(written(clear), {"emissiveColor 1 1 1\n", "transparency 0.8\n"}));
}

TEST_F(FltVrmlShapesTest, haveNoMaterialIfTheyAreUnlitInSeveralColours)
{
    FltMesh mesh = unlit();
    mesh.colors = {0xff0000ff, 0x00ff00ff, 0x0000ffff};
    std::string const text = written(mesh);
    EXPECT_TRUE(holds(text, {"appearance Appearance {", "color Color {", "1 0 0, 0 1 0, 0 0 1"})) << text;
    EXPECT_EQ(text.find("Material"), std::string::npos);
    mesh.colors = {0xff000080, 0x00ff0080, 0x0000ff80};
    std::string const clear = written(mesh);
    EXPECT_EQ(clear.find("Material"), std::string::npos);
    EXPECT_TRUE(holds(clear, {"texture PixelTexture {", "image 1 1 2", "0xFF80"})) << clear;
    EXPECT_TRUE(lost.empty());
}

TEST_F(FltVrmlShapesTest, haveNoMaterialIfTheyAreUnlitWithATexture)
{
    std::string const white = written(textured());
    EXPECT_TRUE(holds(white, {"ImageTexture {", "\"a.png\"", "TextureCoordinate {", "0 0, 1 0, 0 1"}))
        << white;
    EXPECT_EQ(white.find("Material"), std::string::npos);
    EXPECT_EQ(white.find("Color"), std::string::npos);
    EXPECT_TRUE(lost.empty());
    FltMesh tinted = textured();
    tinted.colors = {0xff0000ff};
    EXPECT_TRUE(holds(written(tinted), {"color Color {", "1 0 0, 1 0 0, 1 0 0"}));
    EXPECT_EQ(lost.size(), 1U) << "a reader may pass over the colour";
    textures[0].pixels = std::make_shared<PicturePixels const>(PicturePixels{1, 1, 2, {1, 2}});
    written(tinted);
    EXPECT_TRUE(lost.empty()) << "the texture is grey";
}

TEST_F(FltVrmlShapesTest, areLitIfTheyAreClearAllOverWithATexture)
{
    FltMesh mesh = textured();
    mesh.colors = {0xffffff80};
    EXPECT_TRUE(holds(written(mesh), {"diffuseColor 1 1 1\n", "transparency 0.49"}));
    EXPECT_EQ(lost.size(), 1U);
}

TEST_F(FltVrmlShapesTest, areAsManyAsThereAreOpacities)
{
    FltMesh mesh = triangle();
    mesh.positions.resize(6);
    mesh.normals.resize(6);
    mesh.indices = {0, 1, 2, FltMesh::end, 3, 4, 5, FltMesh::end};
    mesh.colors = {~0U, ~0U, ~0U, ~1U, ~1U, ~1U};
    std::string const text = written(mesh);
    EXPECT_TRUE(holds(text, {"Shape {", "Shape {", "transparency 0.00392"})) << text;
}

TEST_F(FltVrmlShapesTest, turnWithTheMirrorThatTheyStandIn)
{
    std::string const text = written(triangle(), FltVrmlPlace{true, 1});
    EXPECT_TRUE(holds(text, {"ccw FALSE", "-1 0 0, -2 0 0, -1 0 1", "-1 0 0, 0 -1 0"})) << text;
    EXPECT_EQ(written(triangle()).find("ccw"), std::string::npos);
}

TEST_F(FltVrmlShapesTest, standAtTheirOrigin)
{
    FltMesh mesh = triangle();
    mesh.origin = {4500000.5, 5300000.25, 10};
    EXPECT_TRUE(
        holds(written(mesh), {"Transform {", "translation 4500000.5 5300000.25 10\n", "1 0 0, 2 0 0"}));
    EXPECT_TRUE(holds(written(mesh, FltVrmlPlace{true, 1}), {"translation -4500000.5 5300000.25 10\n"}));
}

TEST_F(FltVrmlShapesTest, areSeenFromBothSidesOrHiddenAsTheMeshIs)
{
    FltMesh mesh = triangle();
    mesh.isTwoSided = true;
    mesh.isHidden = true;
    EXPECT_TRUE(holds(written(mesh), {"DEF hidden Switch {", "whichChoice -1", "choice [", "solid FALSE"}));
}

TEST_F(FltVrmlShapesTest, areLinesAndPointsThatShine)
{
    FltMesh mesh = unlit();
    mesh.kind = FltMesh::Kind::lines;
    mesh.size = 3;
    mesh.colors = {0xff0000ff, 0x00ff00ff, 0x0000ffff};
    std::string const lines = written(mesh);
    EXPECT_TRUE(holds(lines, {"IndexedLineSet {", "color Color {", "colorIndex [", "coordIndex ["})) << lines;
    EXPECT_EQ(lost["widths of lines"], 1U);
    FltMesh line = mesh;
    line.positions.pop_back();
    line.colors.pop_back();
    line.indices = {0, 1, FltMesh::end};
    EXPECT_TRUE(holds(written(line), {"color Color {", "1 0 0, 0 1 0\n", "colorIndex ["})) << written(line);
    mesh.kind = FltMesh::Kind::points;
    mesh.indices.clear();
    mesh.colors = {0xff0000ff};
    std::string const points = written(mesh);
    EXPECT_TRUE(holds(points, {"emissiveColor 1 0 0\n", "PointSet {"})) << points;
    EXPECT_EQ(points.find("Index"), std::string::npos);
    EXPECT_EQ(lost["sizes of points"], 1U);
}

TEST_F(FltVrmlShapesTest, loseNoSizeThatTheyDoNotHave)
{
    FltMesh mesh = unlit();
    mesh.kind = FltMesh::Kind::lines;
    written(mesh);
    mesh.kind = FltMesh::Kind::points;
    mesh.indices.clear();
    written(mesh);
    EXPECT_EQ(lost.count("widths of lines") + lost.count("sizes of points"), 0U);
}

TEST_F(FltVrmlShapesTest, areLiftedByAFiveThousandthOfTheirSizeForALevel)
{
    FltMesh mesh = unlit();
    mesh.positions = {{0, 0, 0}, {30, 40, 0}, {0, 40, 0}};
    EXPECT_TRUE(holds(written(mesh), {"0 0 0, 30 40 0, 0 40 0"})) << written(mesh);
    mesh.level = 1;
    EXPECT_TRUE(holds(written(mesh), {"0 0 0.01, 30 40 0.01, 0 40 0.01"})) << written(mesh);
}

TEST_F(FltVrmlShapesTest, loseFurtherLayers)
{
    FltMesh mesh = textured();
    mesh.layers.resize(2);
    written(mesh);
    EXPECT_EQ(lost["further texture layers"], 2U);
}

TEST_F(FltVrmlShapesTest, keepTheAlignmentOfText)
{
    FltVisualText text;
    text.lines = {"GATE", "7 \"A\""};
    text.place = {1, 2, 3};
    text.size = 2;
    text.color = 0xff0000ff;
    std::string const left = written(text);
    EXPECT_TRUE(
        holds(left, {"translation 1 2 5\n", "rotation 1 0 0 1.57", "emissiveColor 1 0 0\n", "\"GATE\"",
                     "\"7 \\\"A\\\"\"", "size 2\n", "justify [", "\"BEGIN\"", "\"FIRST\""}))
        << left;
    text.alignment = FltVisualText::Alignment::right;
    text.isLying = true;
    std::string const right = written(text);
    EXPECT_TRUE(holds(right, {"translation 1 4 3\n", "\"END\""})) << right;
    EXPECT_EQ(right.find("rotation"), std::string::npos);
    text.alignment = FltVisualText::Alignment::center;
    EXPECT_TRUE(holds(written(text), {"\"MIDDLE\""}));
    EXPECT_TRUE(lost.empty());
    written(text, FltVrmlPlace{true, 1});
    EXPECT_EQ(lost.size(), 1U);
}

TEST_F(FltVrmlShapesTest, modulateWhateverTheirTextureIsFor)
{
    textures[0].attributes.environment = FltTextureAttributes::Environment::replace;
    written(textured());
    EXPECT_EQ(lost["textures that don't modulate"], 1U);
}
