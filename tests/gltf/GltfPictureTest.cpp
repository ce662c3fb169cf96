#include "gltf/GltfPicture.h"

#include "support/MadePictures.h"
#include "support/PictureProblems.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace
{

/// A file that every reader of glTF shows alike.
std::string plainPng()
{
    return MadePictures::png().front().bytes;
}

FltTexture textureOf(std::string const& path)
{
    FltTexture texture;
    texture.path = path;
    texture.pixels = decodePicture(contentsOf(path)).pixels;
    return texture;
}

} // namespace

TEST(GltfPicture, IsTheFileItselfUpToTheSizeThatMayBeRead)
{
    ScratchFolder const folder;
    std::string const file = plainPng();
    FltTexture const texture = textureOf(folder.write("a.png", file));
    GltfPicture::Source source = {FltReadableTree(std::nullopt), file.size()};
    EXPECT_EQ(GltfPicture(texture, false, source).bytes, file);
    --source.largestFile;
    std::string const encoded = GltfPicture(texture, false, source).bytes;
    EXPECT_NE(encoded, file);
    EXPECT_EQ(decodePicture(encoded).pixels->bytes, texture.pixels->bytes);
}

TEST(GltfPicture, IsMadeOfThePixelsWhereTheFileIsGone)
{
    ScratchFolder const folder;
    FltTexture texture = textureOf(folder.write("a.png", plainPng()));
    texture.path = folder / "gone.png";
    GltfPicture const picture(texture, false, {FltReadableTree(std::nullopt)});
    EXPECT_EQ(decodePicture(picture.bytes).pixels->bytes, texture.pixels->bytes);
    EXPECT_STREQ(picture.mimeType(), "image/png");
}
