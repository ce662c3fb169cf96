// What lets light through, drawn: in whatever order it stands in the file, and from far away.

#include "pictures/PictureDatabases.h"
#include "pictures/PictureStage.h"
#include "support/SmallPictures.h"
#include "tools/FltshotFixture.h"

#include <algorithm>
#include <cstdlib>

namespace
{

class TransparencyInPictures : public FltshotFixture
{
protected:
    /// The picture of one of the kept databases.
    ShotFile shootKept(std::string const& name) const
    {
        auto const& all = pictureDatabases();
        auto const found = std::find_if(all.begin(), all.end(),
                                        [&](PictureDatabase const& each) { return each.name == name; });
        EXPECT_NE(found, all.end()) << name;
        found->write(directory);
        return shoot(directory / "model.flt", found->options);
    }

    /// How much of a picture a crown covers whose leaves are so many of a hundred, in all its pixels.
    double coverage(int leaves, int transparency, std::string const& zoom) const
    {
        auto const pixel = [&](int x, int y) -> std::array<unsigned char, 4> {
            unsigned const mixed =
                static_cast<unsigned>(x) * 2654435761U ^ static_cast<unsigned>(y) * 40503U * 97;
            bool const isLeaf = static_cast<int>((mixed ^ mixed >> 13) * 31 % 100) < leaves;
            return {40, 120, 40, static_cast<unsigned char>(isLeaf ? 255 : 0)};
        };
        static_cast<void>(directory.write("leaves.rgba", SmallPictures::clearSgi(128, pixel)));
        PictureStage stage;
        std::vector<double> const offsets = stage.texturedPanel(-1);
        stage.flt.add("TexturePattern", {{"fileName", "leaves.rgba"}, {"patternIndex", 0}}).push();
        stage.object(offsets, stage.face(stage.white, {{"texturePatternIndex", 0},
                                                       {"templateBillboard", 1},
                                                       {"transparency", transparency},
                                                       {"lightMode", 0},
                                                       {"drawType", 1}}));
        stage.flt.save(directory / "model.flt");
        ShotFile const picture = shoot(directory / "model.flt", "--view front --transparent --zoom " + zoom);
        double sum = 0;
        for (unsigned y = 0; y < picture.height; ++y)
            for (unsigned x = 0; x < picture.width; ++x)
                sum += picture.alphaAt(x, y) / 255.0;
        return sum;
    }
};

} // namespace

TEST_F(TransparencyInPictures, IsTheSameInWhateverOrderFacesStand)
{
    for (std::string const name : {"trees", "glass"}) {
        ShotFile const one = shootKept(name), other = shootKept(name + "InAnotherOrder");
        ASSERT_EQ(one.pixels.size(), other.pixels.size());
        int worst = 0;
        for (std::size_t i = 0; i < one.pixels.size(); ++i)
            worst = std::max(worst, std::abs(one.pixels[i] - other.pixels[i]));
        EXPECT_LE(worst, 2) << name;
    }
}

/// A face that lets a little light through is blended, which knows how much of each pixel leaves cover.
TEST_F(TransparencyInPictures, KeepsTheCrownsOfFarTrees)
{
    constexpr int hardly = 0x100;
    for (int const leaves : {25, 40, 70})
        for (std::string const zoom : {"0.7", "0.2", "0.08"}) {
            double const blended = coverage(leaves, hardly, zoom);
            EXPECT_NEAR(coverage(leaves, 0, zoom), blended, 0.1 * blended) << leaves << " from " << zoom;
        }
}
