#include "loader/FltSceneTextures.h"

#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"

#include <gtest/gtest.h>

namespace
{

unsigned char const* bytesOf(SoTexture2 const& texture)
{
    SbVec2s size;
    int components;
    return texture.image.getValue(size, components);
}

std::string nameOf(SoTexture2 const& texture)
{
    return texture.filename.getValue().getString();
}

class FltSceneTexturesTest : public testing::Test
{
protected:
    ScratchFolder const folder;
    std::string const database = folder / "a.flt";
    FltTextureFiles files{database};
    FltSceneTextures textures{files};
};

} // namespace

TEST_F(FltSceneTexturesTest, LooksForThoseAloneThatSomebodyHolds)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    SoNodeRef<SoTexture2> const used = textures.make("tree.rgb", database);
    static_cast<void>(textures.make("none.rgb", database));
    std::vector<std::string> read;
    std::vector<FltTexture> const found =
        textures.resolve([&](std::string const& path) { read.push_back(path); });
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "tree.rgb");
    EXPECT_EQ(found[0].path, folder / "tree.rgb");
    EXPECT_EQ(read, std::vector<std::string>{folder / "tree.rgb"});
    EXPECT_NE(bytesOf(*used), nullptr);
}

TEST_F(FltSceneTexturesTest, LooksForNoneWithoutAName)
{
    SoNodeRef<SoTexture2> const node = textures.make("", database);
    EXPECT_TRUE(textures.resolve({}).empty());
    EXPECT_EQ(nameOf(*node), "");
}

TEST_F(FltSceneTexturesTest, GivesAllNodesOfAPictureThePixelsOfOne)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    std::vector<SoNodeRef<SoTexture2>> nodes;
    for (char const* const name : {"tree.rgb", "./tree.rgb", "TREE.RGB", "tree.rgb", "x/tree.png"})
        nodes.push_back(textures.make(name, database));
    EXPECT_EQ(textures.resolve({}).size(), 4U) << "two nodes have the same name";
    ASSERT_NE(bytesOf(*nodes[0]), nullptr);
    for (SoNodeRef<SoTexture2> const& node : nodes)
        EXPECT_EQ(bytesOf(*node), bytesOf(*nodes[0]));
}

TEST_F(FltSceneTexturesTest, NamesThePictureAsItIsToBeWritten)
{
    folder.write("images/tree.rgb", SmallPictures::plainSgi(4));
    FltTextureFiles namedFromAbove(database, {}, folder / "scenes");
    FltSceneTextures others(namedFromAbove);
    SoNodeRef<SoTexture2> const asFound = textures.make("tree.rgb", database);
    SoNodeRef<SoTexture2> const fromAbove = others.make("tree.rgb", database);
    textures.resolve({});
    others.resolve({});
    EXPECT_EQ(nameOf(*asFound), folder / "images/tree.rgb");
    EXPECT_EQ(nameOf(*fromAbove), "../images/tree.rgb");
}

TEST_F(FltSceneTexturesTest, KeepsTheNameOfWhatIsMissingOrNoPicture)
{
    folder.write("text.rgb", "no picture");
    SoNodeRef<SoTexture2> const missing = textures.make("none.rgb", database);
    SoNodeRef<SoTexture2> const bad = textures.make("text.rgb", database);
    EXPECT_EQ(textures.resolve({}).size(), 2U);
    EXPECT_EQ(nameOf(*missing), "none.rgb");
    EXPECT_EQ(nameOf(*bad), "text.rgb");
    EXPECT_EQ(bytesOf(*bad), nullptr);
}
