#include "textures/FltTextureAttributeFile.h"

#include "support/MadeAttributes.h"
#include "support/ScratchFolder.h"
#include "textures/PictureBytes.h"
#include "textures/PicturePixels.h"

#include <gtest/gtest.h>

namespace
{

using Wrap = FltTextureAttributes::Wrap;
using Environment = FltTextureAttributes::Environment;
using Filter = FltTextureAttributes::Filter;

FltTextureAttributes decoded(std::string const& bytes)
{
    return FltTextureAttributeFile::decode(
        PictureBytes(reinterpret_cast<unsigned char const*>(bytes.data()), bytes.size()));
}

FltTextureAttributes with(std::vector<std::pair<std::size_t, long>> const& numbers)
{
    return decoded(madeAttributes(numbers));
}

class FltTextureAttributeFileTest : public testing::Test
{
protected:
    FltTextureAttributes find(std::string const& name, std::string const& picture = "")
    {
        FltTextureSearch search({folder / "elsewhere"});
        return FltTextureAttributeFile::find(search, name, picture.empty() ? "" : folder / picture,
                                             {folder / "db"});
    }

    void write(std::string const& name) const
    {
        static_cast<void>(folder.write(name, madeAttributes({{36, 1}})));
    }

    ScratchFolder folder;
};

} // namespace

TEST(FltTextureAttributes, sayHowATextureRepeats)
{
    EXPECT_EQ(with({}).wrapU, Wrap::repeat);
    FltTextureAttributes const clamped = with({{36, 1}, {40, 3}, {44, 3}});
    EXPECT_EQ(clamped.wrapU, Wrap::clamp);
    EXPECT_EQ(clamped.wrapV, Wrap::clamp);
    FltTextureAttributes const mixed = with({{36, 1}, {40, 4}, {44, 0}});
    EXPECT_EQ(mixed.wrapU, Wrap::mirror);
    EXPECT_EQ(mixed.wrapV, Wrap::repeat);
}

TEST(FltTextureAttributes, sayWhatItsColoursDo)
{
    constexpr Environment all[] = {Environment::modulate, Environment::blend, Environment::decal,
                                   Environment::replace, Environment::add};
    for (long number = 0; number < 5; ++number)
        EXPECT_EQ(with({{60, number}}).environment, all[number]) << number;
}

TEST(FltTextureAttributes, sayHowItIsFiltered)
{
    for (auto const& [number, filter] : {std::pair{0L, Filter::point},
                                         {1L, Filter::bilinear},
                                         {3L, Filter::mipmapPoint},
                                         {4L, Filter::mipmapLinear},
                                         {5L, Filter::mipmapBilinear},
                                         {6L, Filter::mipmapTrilinear}})
        EXPECT_EQ(with({{28, number}}).minification, filter) << number;
    EXPECT_EQ(with({{32, 0}}).magnification, Filter::point);
    EXPECT_EQ(with({{32, 1}}).magnification, Filter::bilinear);
}

TEST(FltTextureAttributes, countAsNotGivenWhereANumberMeansNothing)
{
    FltTextureAttributes const odd = with({{28, 2}, {32, 9}, {36, 7}, {40, -1}, {60, 5}});
    EXPECT_EQ(odd.wrapU, Wrap::repeat);
    EXPECT_EQ(odd.environment, Environment::modulate);
    EXPECT_EQ(odd.minification, Filter::mipmapTrilinear);
    EXPECT_EQ(odd.magnification, Filter::bilinear);
    ASSERT_EQ(odd.problems.size(), 5U);
    EXPECT_EQ(odd.problems[2], "its wrap is 7");
    EXPECT_TRUE(with({}).problems.empty());
}

TEST(FltTextureAttributes, sayOfAShortFileWhatIsInIt)
{
    std::string const whole = madeAttributes({{36, 1}, {40, 3}, {44, 3}, {60, 2}});
    FltTextureAttributes const cut = decoded(whole.substr(0, 42));
    EXPECT_EQ(cut.wrapU, Wrap::clamp);
    EXPECT_EQ(cut.environment, Environment::modulate);
    EXPECT_EQ(cut.problems, std::vector<std::string>{"it ends after 42 bytes of 64"});
    EXPECT_EQ(decoded("").problems.size(), 1U);
    EXPECT_EQ(decoded("").kindOfFile, FltTextureAttributes::unknownKind);
    EXPECT_EQ(FltTextureAttributes().kindOfFile, FltTextureAttributes::unknownKind);
    EXPECT_TRUE(decoded(whole.substr(0, 64)).problems.empty());
}

TEST(FltTextureAttributes, contradictAPictureOfOtherChannels)
{
    PicturePixels picture;
    picture.components = 3;
    auto const contradictionOf = [&](long kind) {
        return FltTextureAttributeFile::contradiction(with({{24, kind}}), picture);
    };
    EXPECT_EQ(contradictionOf(4), "");
    EXPECT_EQ(contradictionOf(99), "") << "a kind that says no channels";
    EXPECT_EQ(contradictionOf(5), "it speaks of a picture of 4 channels, which has 3");
}

TEST_F(FltTextureAttributeFileTest, standBesideThePictureFirst)
{
    write("db/tree.rgb.attr");
    write("pictures/tree.rgb.attr");
    write("pictures/LEAF.rgb.ATTR");
    EXPECT_EQ(find("tree.rgb", "pictures/tree.rgb").path, folder / "pictures/tree.rgb.attr");
    EXPECT_EQ(find("leaf.rgb", "pictures/leaf.rgb").path, folder / "pictures/LEAF.rgb.ATTR");
    EXPECT_EQ(find("tree.rgb", "empty/tree.rgb").path, folder / "db/tree.rgb.attr");
    EXPECT_EQ(find("tree.rgb").wrapU, Wrap::clamp);
}

TEST_F(FltTextureAttributeFileTest, areFoundByTheNameOfAPictureInAnotherFormat)
{
    write("db/tree.png.attr");
    EXPECT_EQ(find("C:\\old\\tree.rgb", "db/tree.png").path, folder / "db/tree.png.attr");
    EXPECT_EQ(find("C:\\old\\tree.rgb").path, "");
}

TEST_F(FltTextureAttributeFileTest, areNoPictureOfTheSameName)
{
    write("db/tree.rgb.rgb");
    write("elsewhere/leaf.rgb");
    EXPECT_EQ(find("tree.rgb").path, "");
    EXPECT_EQ(find("leaf.rgb").path, "");
    write("elsewhere/leaf.rgb.attr");
    EXPECT_EQ(find("leaf.rgb").path, folder / "elsewhere/leaf.rgb.attr");
}
