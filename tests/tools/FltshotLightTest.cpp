// How fltshot draws light: on faces that have none, on sides in the shade; and how large points and lines
// are.

#include "FltshotFixture.h"

#include <cmath>

namespace
{

class FltshotLight : public FltshotFixture
{
protected:
    /// A roof of two white faces that aren't lit, with a texture or without one.
    std::string roof(std::string const& texture = "") const
    {
        FltWriter flt;
        if (!texture.empty())
            flt.add("TexturePattern", {{"fileName", texture}, {"patternIndex", 0}});
        flt.vertexPalette();
        auto const corners = [&](std::vector<std::vector<double>> const& places) {
            std::vector<double> offsets;
            for (std::vector<double> const& place : places)
                offsets.push_back(flt.vertex("VertexColorUv", place[0], place[1], place[2]));
            return offsets;
        };
        std::vector<double> const west = corners({{-2, -2, 0}, {0, -2, 2}, {0, 2, 2}, {-2, 2, 0}});
        std::vector<double> const east = corners({{0, -2, 2}, {2, -2, 0}, {2, 2, 0}, {0, 2, 2}});
        flt.push().add("Object", {{"idASCII", "roof"}}).push();
        for (std::vector<double> const& face : {west, east})
            flt.face(face, {{"flags", 0x10000000},
                            {"packedColor", {255, 255, 255, 255}},
                            {"lightMode", 0},
                            {"texturePatternIndex", texture.empty() ? -1 : 0}});
        flt.pop().pop().save(directory / "roof.flt");
        return directory / "roof.flt";
    }

    /// How many pixels are at least half as bright as they can be.
    static int brightIn(ShotFile const& shot)
    {
        int count = 0;
        for (unsigned y = 0; y < shot.height; ++y)
            for (unsigned x = 0; x < shot.width; ++x)
                count += shot.at(x, y)[1] >= 128 ? 1 : 0;
        return count;
    }
};

} // namespace

TEST_F(FltshotLight, lightsFacesThatArentLitOnRequest)
{
    std::string const options = "--view top --zoom 0.9 ";
    ShotFile const plain = shoot(roof(), options);
    EXPECT_EQ(plain.at(30, 48), plain.at(66, 48));
    ShotFile const lit = shoot(roof(), options + "--light");
    EXPECT_GT(std::abs(lit.at(30, 48)[0] - lit.at(66, 48)[0]), 40);
}

TEST_F(FltshotLight, saysThatWhiteShapesLackTheirTexturesAndWhatToDo)
{
    auto const errorsOf = [&](std::string const& arguments) {
        ProgramRun const run("fltshot", arguments + " --view top --size 32x32 -o " + output);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return run.errors;
    };
    std::string const errors = errorsOf(roof("gone.rgb"));
    EXPECT_TRUE(holds(errors, "roof.flt: 1 shape is plain white: it isn't lit, and its texture is missing. "
                              "--light shows the form, --texture-path DIR finds textures.\n"))
        << errors;
    EXPECT_FALSE(holds(errorsOf(roof("gone.rgb") + " --light"), "plain white"));
    EXPECT_EQ(errorsOf(roof()), "") << "a shape without a texture is as it was made";
}

TEST_F(FltshotLight, leavesNoSideBlack)
{
    constexpr int sides = 16;
    for (bool const hasMaterial : {false, true}) {
        FltWriter flt;
        if (hasMaterial)
            flt.add("Material",
                    {{"index", 0}, {"ambient", {0.2, 0.2, 0.2}}, {"diffuse", {1, 1, 1}}, {"alpha", 1}});
        flt.vertexPalette();
        std::vector<std::vector<double>> squares;
        for (int i = 0; i < sides; ++i) {
            int const row = i / 4;
            double const angle = 2 * M_PI * i / sides, x = 3 * (i % 4), y = 3 * row;
            std::vector<double> const normal = {0.99 * std::cos(angle), 0.99 * std::sin(angle), 0.1};
            squares.emplace_back();
            for (auto const& [right, up] : {std::pair{0, 0}, {2, 0}, {2, 2}, {0, 2}})
                squares.back().push_back(
                    flt.vertex("VertexColorNormal", x + right, y + up, 0, {{"vertexNormal", normal}}));
        }
        flt.push().add("Object").push();
        for (std::vector<double> const& square : squares)
            flt.face(square, {{"flags", 0x10000000},
                              {"packedColor", {255, 255, 255, 255}},
                              {"materialIndex", hasMaterial ? 0 : -1},
                              {"lightMode", 2}});
        flt.pop().pop().save(directory / "sides.flt");
        ShotFile const shot = shoot(directory / "sides.flt", "--view top --transparent");
        int darkest = 255;
        for (unsigned y = 0; y < shot.height; ++y)
            for (unsigned x = 0; x < shot.width; ++x)
                if (shot.alphaAt(x, y) == 255)
                    darkest = std::min(darkest, shot.at(x, y)[0]);
        EXPECT_GT(darkest, hasMaterial ? 40 : 75);
        EXPECT_LT(darkest, 160) << "shade is to be seen";
    }
}

TEST_F(FltshotLight, drawsPointsAsLargeAsTheyAreStored)
{
    FltWriter flt;
    flt.vertexPalette();
    double const lamp = flt.vertex("VertexColor", 0, 0, 0);
    flt.push().add("LightPoint", {{"actualPixelSize", 12}}).push().add("VertexList", {{"offsets", {lamp}}});
    flt.pop().pop().save(directory / "lamp.flt");
    EXPECT_NEAR(brightIn(shoot(directory / "lamp.flt", "--background black --eye 0,0,10")), 144, 14);
}

TEST_F(FltshotLight, drawsLinesAsWideAsTheyAreStored)
{
    for (int const width : {1, 6}) {
        FltWriter flt;
        flt.add("LineStylePalette", {{"lineStyleIndex", 0}, {"lineWidth", width}}).vertexPalette();
        double const left = flt.vertex("VertexColor", -90, 0, 0), right = flt.vertex("VertexColor", 90, 0, 0);
        flt.push().add("Object").push();
        flt.face({left, right}, {{"flags", 0x10000000},
                                 {"packedColor", {255, 255, 255, 255}},
                                 {"lightMode", 0},
                                 {"lineStyleIndex", 0}});
        flt.pop().pop().save(directory / "line.flt");
        ShotFile const shot =
            shoot(directory / "line.flt", "--background black --eye 0,-10,0.1 --look-at 0,0,0.1");
        double sum = 0;
        for (unsigned y = 0; y < shot.height; ++y)
            sum += shot.at(48, y)[0] / 255.0;
        EXPECT_NEAR(sum, width, 0.3) << "from edge to edge";
    }
}
