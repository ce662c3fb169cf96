#include "vrml/FltVrmlPictures.h"

#include "support/MemoryStream.h"

#include <gtest/gtest.h>

namespace
{

FltTexture texture(std::string const& name, int components)
{
    FltTexture made;
    made.name = made.written = name;
    if (components != 0)
        made.pixels = std::make_shared<PicturePixels const>(PicturePixels{
            1, 1, components, std::vector<unsigned char>(static_cast<std::size_t>(components), 7)});
    return made;
}

FltMesh meshOf(std::int32_t number, bool ignoresAlpha = false)
{
    FltMesh mesh;
    mesh.texture = number;
    mesh.ignoresTextureAlpha = ignoresAlpha;
    return mesh;
}

std::string written(FltVrmlPictures& pictures, std::vector<FltMesh> const& meshes)
{
    MemoryStream const stream;
    {
        VrmlText text(stream);
        VrmlNames names;
        for (FltMesh const& mesh : meshes)
            pictures.write(text, names, mesh);
    }
    return stream.text().substr(std::string("#VRML V2.0 utf8\n").size());
}

} // namespace

TEST(FltVrmlPictures, areListedOnceEach)
{
    std::vector<FltTexture> const textures = {texture("a", 3), texture("b", 4), texture("a", 3)};
    auto const shared = std::make_shared<FltVisualNode>();
    shared->meshes = {meshOf(2), meshOf(1, true)};
    FltVisualNode root;
    root.children = {shared, nullptr, shared};
    root.meshes = {meshOf(0), meshOf(1), meshOf(FltMesh::none)};
    FltVrmlPictures const pictures(root, textures);
    ASSERT_EQ(pictures.list.size(), 3U);
    EXPECT_EQ(pictures.list[0].texture->name, "a");
    EXPECT_FALSE(pictures.list[1].isOpaque);
    EXPECT_TRUE(pictures.list[2].isOpaque) << "the same without its alpha is another picture";
    EXPECT_EQ(pictures.list[1].pixels()->bytes.size(), 4U);
    EXPECT_EQ(pictures.list[2].pixels()->bytes, (std::vector<unsigned char>{7, 7, 7}));
    EXPECT_EQ(pictures.componentsOf(meshOf(1)), 4);
    EXPECT_EQ(pictures.componentsOf(meshOf(1, true)), 3);
    EXPECT_EQ(pictures.componentsOf(meshOf(FltMesh::none)), 0);
}

TEST(FltVrmlPictures, withoutAlphaIgnoreNone)
{
    std::vector<FltTexture> const textures = {texture("a", 1)};
    FltVisualNode root;
    root.meshes = {meshOf(0), meshOf(0, true)};
    EXPECT_EQ(FltVrmlPictures(root, textures).list.size(), 1U);
}

TEST(FltVrmlPictures, standInTheFileOnceOrAreNamed)
{
    std::vector<FltTexture> const textures = {texture("a", 2), texture("b", 3)};
    FltVisualNode root;
    root.meshes = {meshOf(0), meshOf(1)};
    FltVrmlPictures pictures(root, textures);
    pictures.list[1].url = "b.png";
    EXPECT_EQ(written(pictures, {meshOf(0), meshOf(0), meshOf(1)}),
              "texture DEF picture PixelTexture {\n image 1 1 2\n 0x0707\n}\n"
              "texture USE picture\n"
              "texture ImageTexture {\n url [\n  \"b.png\"\n ]\n}\n");
}

TEST(FltVrmlPictures, thatAreMissingKeepTheirNames)
{
    std::vector<FltTexture> const textures = {texture("C:\\lost.rgb", 0), texture("", 0)};
    FltVisualNode root;
    root.meshes = {meshOf(0), meshOf(1)};
    FltVrmlPictures pictures(root, textures);
    EXPECT_NE(written(pictures, {meshOf(0)}).find("\"C:\\\\lost.rgb\""), std::string::npos);
    EXPECT_EQ(written(pictures, {meshOf(1)}), "") << "it has none";
    EXPECT_EQ(pictures.componentsOf(meshOf(0)), 0);
}

TEST(FltVrmlPictures, endAtTheirEdgesIfTheyAreClamped)
{
    std::vector<FltTexture> textures = {texture("a", 3)};
    textures[0].attributes.wrapV = FltTextureAttributes::Wrap::clamp;
    FltVisualNode root;
    root.meshes = {meshOf(0)};
    FltVrmlPictures pictures(root, textures);
    std::string const inside = written(pictures, {meshOf(0)});
    EXPECT_NE(inside.find("repeatT FALSE"), std::string::npos) << inside;
    EXPECT_EQ(inside.find("repeatS"), std::string::npos);
    pictures.list[0].url = "a.png";
    EXPECT_NE(written(pictures, {meshOf(0)}).find("repeatT FALSE"), std::string::npos);
}
