#include "gltf/FltGltfTextures.h"

#include <gtest/gtest.h>

namespace
{

FltTexture texture(std::string const& name, int width)
{
    FltTexture made;
    made.name = name;
    made.pixels = std::make_shared<PicturePixels const>(
        PicturePixels{width, 1, 3, std::vector<unsigned char>(static_cast<std::size_t>(width) * 3, 'x')});
    return made;
}

/// The textures of a file whose pictures are in it.
class FltGltfTexturesTest : public testing::Test
{
protected:
    int numberOf(std::int32_t texture) { return used.numberOf(texture, false); }

    GltfDocument document;
    std::vector<FltTexture> textures;
    GltfPicture::Source const source = {FltReadableTree(std::nullopt)};
    FltGltfTextures used{document, textures, source,
                         [](GltfPicture const&, std::string const&) { return ""; }};
};

} // namespace

TEST_F(FltGltfTexturesTest, areThereOnceForEachPictureAndSampler)
{
    textures = {texture("a.rgb", 2), texture("b.rgb", 2), texture("a.rgb", 2)};
    textures[2].pixels = textures[0].pixels;
    EXPECT_EQ(numberOf(0), 0);
    EXPECT_EQ(numberOf(1), 1);
    EXPECT_EQ(numberOf(2), 0);
    textures[2].attributes.wrapU = FltTextureAttributes::Wrap::clamp;
    EXPECT_EQ(numberOf(2), 2);
    EXPECT_EQ(document.count(GltfDocument::List::images), 2U);
    EXPECT_TRUE(used.missing().empty());
}

TEST_F(FltGltfTexturesTest, areNoneWithoutAPictureHoweverOftenTheyAreAskedFor)
{
    textures = {texture("empty.rgb", 0), FltTexture()};
    textures[1].name = "gone.rgb";
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(numberOf(0), FltGltfTextures::none);
        EXPECT_EQ(numberOf(1), FltGltfTextures::none);
    }
    EXPECT_EQ(document.count(GltfDocument::List::images), 0U);
    EXPECT_EQ(used.missing(), (std::vector<std::string>{"empty.rgb", "gone.rgb"}));
}
