#include "convert/FltTextures.h"

#include "support/SceneText.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoSeparator.h>
#include <cstring>
#include <gtest/gtest.h>
#include <iostream>
#include <sys/stat.h>

namespace
{

unsigned char const* pixelsOf(SoTexture2 const& texture)
{
    SbVec2s size;
    int components;
    return texture.image.getValue(size, components);
}

class FltTexturesTest : public testing::Test
{
protected:
    StreamCapture const err{std::cerr};
    ScratchFolder folder;
    FltTextures textures;
};

TEST_F(FltTexturesTest, ANodeHasItsNameAndItsPixels)
{
    std::string const path = folder.write("a.rgb", SmallPictures::plainSgi(2, 77));
    SoNodeRef<SoTexture2> const texture = textures.make(path);
    EXPECT_EQ(texture->filename.getValue(), path.c_str());
    ASSERT_NE(pixelsOf(*texture.get()), nullptr);
    EXPECT_EQ(*pixelsOf(*texture.get()), 77);
}

TEST_F(FltTexturesTest, NodesOfOneFileSharePixelsFromTheSecondOnWhateverItsName)
{
    std::string const path = folder.write("a.rgb", SmallPictures::plainSgi(2, 77));
    std::filesystem::create_symlink(path, folder.path("b.rgb"));
    SoNodeRef<SoTexture2> const first = textures.make(path);
    SoNodeRef<SoTexture2> const second = textures.make(path);
    SoNodeRef<SoTexture2> const third = textures.make(folder / "b.rgb");
    EXPECT_NE(first.get(), second.get());
    EXPECT_EQ(pixelsOf(*second.get()), pixelsOf(*third.get()));
    EXPECT_EQ(std::memcmp(pixelsOf(*first.get()), pixelsOf(*second.get()), 12), 0);
    EXPECT_EQ(third->filename.getValue(), (folder / "b.rgb").c_str());
}

TEST_F(FltTexturesTest, ASharingNodeIsWrittenAsAnyOther)
{
    std::string const path = folder.write("a.rgb", SmallPictures::plainSgi(2));
    SoNodeRef<SoSeparator> const scene(new SoSeparator);
    for (int i = 0; i < 3; ++i)
        scene->addChild(textures.make(path).get());
    std::string const node = "  Texture2 {\n    filename \"" + path + "\"\n  }\n";
    EXPECT_NE(sceneText(scene.get()).find(node + node + node), std::string::npos) << sceneText(scene.get());
}

TEST_F(FltTexturesTest, ACopyOfASharingNodeOutlivesIt)
{
    std::string const path = folder.write("a.rgb", SmallPictures::plainSgi(4, 99));
    SoNodeRef<SoNode> copy(new SoSeparator);
    {
        FltTextures own;
        SoNodeRef<SoTexture2> const first = own.make(path);
        SoNodeRef<SoTexture2> const second = own.make(path);
        copy = SoNodeRef<SoNode>(second->copy());
    }
    auto const& texture = static_cast<SoTexture2&>(*copy);
    ASSERT_NE(pixelsOf(texture), nullptr);
    EXPECT_EQ(pixelsOf(texture)[47], 99);
}

TEST_F(FltTexturesTest, APipeIsNotOpenedAndReported)
{
    std::string const path = folder / "pipe.rgb";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    SoNodeRef<SoTexture2> const texture = textures.make(path);
    EXPECT_EQ(texture->filename.getValue(), path.c_str());
    EXPECT_EQ(pixelsOf(*texture.get()), nullptr);
    EXPECT_EQ(err.str(), "WARNING ! A texture isn't read, since its file isn't a plain one: " + path +
                             "\n(Warning Level: 2)\n\n");
}

TEST_F(FltTexturesTest, AFolderIsLeftToTheToolkitWithoutAWord)
{
    SoNodeRef<SoTexture2> const texture = textures.make(folder / "");
    EXPECT_EQ(pixelsOf(*texture.get()), nullptr);
    EXPECT_EQ(err.str(), "");
}

TEST_F(FltTexturesTest, AFileThatIsNoPictureIsTriedAgainForEachNode)
{
    std::string const path = folder.write("a.rgb", "no picture");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(pixelsOf(*textures.make(path).get()), nullptr);
}

} // namespace

TEST_F(FltTexturesTest, APictureThatItsFileCantHoldIsNamedAndNotRead)
{
    std::string bytes = SmallPictures::plainSgi(2);
    bytes.replace(6, 4, "\xff\xff\xff\xff");
    std::string const path = folder.write("a.rgb", bytes);
    for (int i = 0; i < 2; ++i) {
        SoNodeRef<SoTexture2> const texture = textures.make(path);
        EXPECT_EQ(texture->filename.getValue(), path.c_str());
        EXPECT_EQ(pixelsOf(*texture.get()), nullptr);
    }
    EXPECT_NE(
        err.str().find("A texture isn't read, since its file can't hold a picture of its size: " + path),
        std::string::npos);
}
