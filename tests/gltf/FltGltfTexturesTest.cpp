#include "gltf/FltGltfTextures.h"

#include <gtest/gtest.h>
#include <tuple>
#include <utility>

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

TEST_F(FltGltfTexturesTest, areSampledByTheNumbersThatTheFormatHas)
{
    using Filter = FltTextureAttributes::Filter;
    using Wrap = FltTextureAttributes::Wrap;
    auto const samplerOf = [this](FltTextureAttributes const& attributes) {
        textures = {texture("a.rgb", 2)};
        textures[0].attributes = attributes;
        int const number = numberOf(0);
        GltfJson const json = GltfJson::parse(document.text(0));
        return json["samplers"][json["textures"][number]["sampler"].get<std::size_t>()];
    };
    for (auto const& [wrap, number] :
         {std::pair(Wrap::repeat, 10497), {Wrap::clamp, 33071}, {Wrap::mirror, 33648}}) {
        FltTextureAttributes attributes;
        attributes.wrapU = wrap;
        EXPECT_EQ(samplerOf(attributes)["wrapS"], number);
        EXPECT_EQ(samplerOf(attributes)["wrapT"], 10497);
        attributes.wrapV = wrap;
        EXPECT_EQ(samplerOf(attributes)["wrapT"], number);
    }
    for (auto const& [filter, smaller, larger] : {std::tuple(Filter::point, 9728, 9728),
                                                  {Filter::bilinear, 9729, 9729},
                                                  {Filter::mipmapPoint, 9984, 9728},
                                                  {Filter::mipmapBilinear, 9985, 9729},
                                                  {Filter::mipmapLinear, 9986, 9729},
                                                  {Filter::mipmapTrilinear, 9987, 9729}}) {
        FltTextureAttributes attributes;
        attributes.minification = attributes.magnification = filter;
        EXPECT_EQ(samplerOf(attributes)["minFilter"], smaller);
        EXPECT_EQ(samplerOf(attributes)["magFilter"], larger);
    }
}
