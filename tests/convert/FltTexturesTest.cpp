#include "convert/FltTextures.h"

#include "support/MadePictures.h"
#include "support/SceneText.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"
#include "support/StreamCapture.h"
#include "support/ToolkitReads.h"
#include "textures/Picture.h"

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
    EXPECT_EQ(err.str(),
              "WARNING ! A texture isn't read: " + path + " isn't a plain file" + "\n(Warning Level: 2)\n\n");
}

/// It was shown without a word.
TEST_F(FltTexturesTest, ACutPictureIsReportedOnceAndShown)
{
    SmallPictures::writeJpeg(folder.path("a.jpg"), 64, 64, false);
    std::string const whole = contentsOf(folder / "a.jpg");
    std::string const path = folder.write("a.jpg", whole.substr(0, whole.size() - 20));
    for (int i = 0; i < 2; ++i)
        EXPECT_NE(pixelsOf(*textures.make(path).get()), nullptr);
    EXPECT_EQ(err.str(), "WARNING ! A texture is shown in part: " + path +
                             " is a damaged JPEG picture (Premature end of JPEG file). " + Picture::advice +
                             "\n(Warning Level: 2)\n\n");
}

TEST_F(FltTexturesTest, AFolderIsPassedOverWithoutAWord)
{
    SoNodeRef<SoTexture2> const texture = textures.make(folder / "");
    EXPECT_EQ(pixelsOf(*texture.get()), nullptr);
    EXPECT_EQ(err.str(), "");
}

TEST_F(FltTexturesTest, AFileThatIsNoPictureIsNamedAndReportedForEachNode)
{
    std::string const path = folder.write("a.rgb", "no picture");
    std::string const report = "WARNING ! A texture isn't read: " + path +
                               " is no picture of a kind that is read\n(Warning Level: 2)\n\n";
    for (int i = 0; i < 2; ++i) {
        SoNodeRef<SoTexture2> const texture = textures.make(path);
        EXPECT_EQ(pixelsOf(*texture.get()), nullptr);
        EXPECT_EQ(texture->filename.getValue(), path.c_str());
    }
    EXPECT_EQ(err.str(), report + report);
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
    EXPECT_NE(err.str().find("A texture isn't read: " + path + " can't hold a picture of its size\n"),
              std::string::npos);
}

TEST_F(FltTexturesTest, TheToolkitReadsWhatOurDecodersAccept)
{
    for (MadePicture const& made : MadePictures::all()) {
        std::string const path = folder.write(made.name, made.bytes);
        SoNodeRef<SoTexture2> const texture = textures.make(path);
        EXPECT_EQ(texture->filename.getValue(), path.c_str());
        if (made.toolkit == MadePicture::Toolkit::agrees) {
            EXPECT_NE(pixelsOf(*texture.get()), nullptr) << made.name;
        }
    }
}

TEST_F(FltTexturesTest, TheToolkitGetsNoFileThatOurDecodersDontAccept)
{
    std::string late = MadePictures::png()[3].bytes;
    late.insert(8, std::string("\0\0\0\x0aprVt\0\0\0\1\0\0\0\1\x8\0sum.",
                               22)); // a chunk before the head, with a size of its own
    std::string old = MadePictures::gif()[0].bytes;
    old.replace(3, 3, "79a");
    std::string const large = "GIF79a\xff\x7f\xff\x7f" + std::string(31, '\0');
    std::string const wide = MadePictures::sgi().back().bytes; // two bytes for each value
    ToolkitReads const reads;
    for (std::string const& bytes :
         {late, old, large, wide, std::string("DDS "), std::string("BM"), std::string()}) {
        std::string const path = folder.write("a.png", bytes);
        SoNodeRef<SoTexture2> const texture = FltTextures().make(path);
        EXPECT_EQ(texture->filename.getValue(), path.c_str());
    }
    EXPECT_EQ(reads.number, 0);
}
