#include "loader/FltSceneTextures.h"

#include "support/ExchangedFolders.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"

#include <gtest/gtest.h>

namespace
{

using Texture = FltSceneTextures::Texture;

unsigned char const* bytesOf(SoTexture2 const& texture)
{
    SbVec2s size;
    int components;
    return texture.image.getValue(size, components);
}

} // namespace

TEST(FltSceneTextures, LooksForThoseAloneThatSomebodyHolds)
{
    ScratchFolder const folder;
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    FltSceneTextures textures(folder / "a.flt", {});
    SoNodeRef<SoTexture2> const used = textures.make("tree.rgb", folder / "a.flt");
    static_cast<void>(textures.make("none.rgb", folder / "a.flt"));
    std::vector<std::string> read;
    std::vector<Texture> const found =
        textures.resolve([&](std::string const& path) { read.push_back(path); });
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "tree.rgb");
    EXPECT_EQ(found[0].path, folder / "tree.rgb");
    EXPECT_EQ(read, std::vector<std::string>{folder / "tree.rgb"});
    EXPECT_NE(bytesOf(*used), nullptr);
}

TEST(FltSceneTextures, ReadsAnImageOnceHoweverManyNamesItHas)
{
    ScratchFolder const folder;
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    FltSceneTextures textures(folder / "a.flt", {});
    std::vector<SoNodeRef<SoTexture2>> nodes;
    for (char const* const name : {"tree.rgb", "./tree.rgb", "TREE.RGB", "tree.rgb", "x/tree.png"})
        nodes.push_back(textures.make(name, folder / "a.flt"));
    EXPECT_EQ(textures.resolve([](std::string const&) {}).size(), 4U) << "two nodes have the same name";
    for (SoNodeRef<SoTexture2> const& node : nodes)
        EXPECT_EQ(bytesOf(*node), bytesOf(*nodes[0]));
}

TEST(FltSceneTextures, ReadsNoPictureThatItsFileCantHold)
{
    ScratchFolder const folder;
    std::string bytes = SmallPictures::plainSgi(2);
    bytes.replace(6, 4, "\xff\xff\xff\xff");
    folder.write("huge.rgb", bytes);
    FltSceneTextures textures(folder / "a.flt", {});
    SoNodeRef<SoTexture2> const huge = textures.make("huge.rgb", folder / "a.flt");
    std::vector<Texture> const found = textures.resolve([](std::string const&) {});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].unreadable, folder / "huge.rgb");
    EXPECT_EQ(bytesOf(*huge), nullptr);
}

TEST(FltSceneTextures, KeepsTheNameOfWhatIsMissingOrNoImage)
{
    ScratchFolder const folder;
    std::string const text = folder.write("text.rgb", "no image");
    FltSceneTextures textures(folder / "a.flt", {});
    SoNodeRef<SoTexture2> const missing = textures.make("none.rgb", folder / "a.flt");
    SoNodeRef<SoTexture2> const bad = textures.make("text.rgb", folder / "a.flt");
    std::vector<Texture> const found = textures.resolve([](std::string const&) {});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].path, "");
    EXPECT_FALSE(found[0].tried.empty());
    EXPECT_EQ(found[0].unreadable, "");
    EXPECT_EQ(found[1].path, "");
    EXPECT_EQ(found[1].unreadable, text);
    EXPECT_STREQ(missing->filename.getValue().getString(), "none.rgb");
    EXPECT_STREQ(bad->filename.getValue().getString(), "text.rgb");
}

TEST(FltSceneTextures, TakesAnotherFormatWhereTheStoredOneCannotBeRead)
{
    ScratchFolder const folder;
    folder.write("tree.dds", "a format that is not known");
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    FltSceneTextures textures(folder / "a.flt", {});
    SoNodeRef<SoTexture2> const node = textures.make("tree.dds", folder / "a.flt");
    std::vector<Texture> const found = textures.resolve([](std::string const&) {});
    EXPECT_EQ(found.at(0).path, folder / "tree.rgb");
    EXPECT_EQ(found.at(0).unreadable, "");
    EXPECT_NE(bytesOf(*node), nullptr);
}

TEST(FltSceneTextures, ReadsTheImageThatItFoundWhateverTakesItsNameMeanwhile)
{
    ExchangedFolders const folders;
    folders.folder.write("tree/part/tree.rgb", SmallPictures::plainSgi(4));
    folders.folder.write("outside/tree.rgb", SmallPictures::plainSgi(8));
    FltSceneTextures textures(folders.tree() + "/a.flt", {}, std::nullopt, FltReadableTree(folders.tree()));
    SoNodeRef<SoTexture2> const node = textures.make("part/tree.rgb", folders.tree() + "/a.flt");
    textures.resolve([&](std::string const&) { folders.exchange(); });
    SbVec2s size;
    int components;
    EXPECT_NE(node->image.getValue(size, components), nullptr);
    EXPECT_EQ(size, SbVec2s(4, 4));
}
