#include "toolkit/SoSharedTexture.h"

#include "support/SceneText.h"
#include "textures/PicturePixels.h"

#include <gtest/gtest.h>

namespace
{

std::shared_ptr<PicturePixels const> pixel(unsigned char grey)
{
    return std::make_shared<PicturePixels const>(PicturePixels{1, 1, 1, {grey}});
}

unsigned char const* bytesOf(SoTexture2 const& texture)
{
    SbVec2s size;
    int components;
    return texture.image.getValue(size, components);
}

} // namespace

TEST(SoSharedTexture, HasANameThatOpensNoFile)
{
    auto* const texture = new SoSharedTexture;
    texture->ref();
    texture->setFileName("/dev/zero");
    EXPECT_STREQ(texture->filename.getValue().getString(), "/dev/zero");
    EXPECT_EQ(bytesOf(*texture), nullptr);
    texture->unref();
}

TEST(SoSharedTexture, SharesPixelsThatLiveAsLongAsItself)
{
    std::shared_ptr<PicturePixels const> pixels = pixel(7);
    std::weak_ptr<PicturePixels const> const watched = pixels;
    SoSharedTexture* const textures[] = {new SoSharedTexture, new SoSharedTexture};
    for (SoSharedTexture* const texture : textures) {
        texture->ref();
        texture->setPixels(pixels);
        EXPECT_EQ(bytesOf(*texture), pixels->bytes.data());
    }
    pixels.reset();
    EXPECT_EQ(*bytesOf(*textures[1]), 7);
    textures[0]->setPixels(pixel(9));
    EXPECT_EQ(*bytesOf(*textures[0]), 9);
    EXPECT_FALSE(watched.expired());
    textures[0]->unref();
    textures[1]->unref();
    EXPECT_TRUE(watched.expired());
}

TEST(SoSharedTexture, IsWrittenByItsName)
{
    auto* const texture = new SoSharedTexture;
    texture->ref();
    texture->setPixels(pixel(7));
    texture->setFileName("tree.rgb");
    std::string const text = sceneText(texture);
    EXPECT_NE(text.find("filename \"tree.rgb\""), std::string::npos);
    EXPECT_EQ(text.find("image"), std::string::npos);
    texture->unref();
}
