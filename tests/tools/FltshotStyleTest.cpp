// How fltshot draws: backgrounds, alpha, wireframe, both sides, levels of detail; PNG and JPEG.

#include "FltshotFixture.h"

#include <cmath>

using FltshotStyle = FltshotFixture;

namespace
{

/// A level of detail that is drawn between two distances.
FltWriter::Fields between(double nearest, double farthest)
{
    return {{"idASCII", "level"}, {"switchOutDistance", nearest}, {"switchInDistance", farthest}};
}

} // namespace

TEST_F(FltshotStyle, fillsTheBackgroundWithAColourOrTwo)
{
    std::string const database = square(0, 255, 0);
    std::string const small = " --view top --zoom 0.3 --background ";
    EXPECT_EQ(shoot(database, small + "'#102030'").at(0, 0), (std::array<int, 3>{16, 32, 48}));
    EXPECT_EQ(shoot(database, small + "orange").at(95, 95), (std::array<int, 3>{255, 165, 0}));
    ShotFile const two = shoot(database, small + "navy,#ffffff");
    EXPECT_NEAR(two.meanOf(0, 0, 96, 1)[0], 0, 3) << "navy at the top";
    EXPECT_NEAR(two.meanOf(0, 0, 96, 1)[2], 128, 3);
    EXPECT_NEAR(two.meanOf(0, 95, 96, 1)[0], 255, 3) << "white at the bottom";
    EXPECT_EQ(shoot(database, small + "sky").pixels, shoot(database, " --view top --zoom 0.3").pixels);
}

TEST_F(FltshotStyle, leavesTheBackgroundTransparent)
{
    ShotFile const shot = shoot(square(0, 255, 0), "--view top --zoom 0.5 --transparent");
    EXPECT_TRUE(shot.hasAlpha);
    EXPECT_EQ(shot.alphaAt(0, 0), 0);
    EXPECT_EQ(shot.alphaAt(48, 48), 255);
    EXPECT_GT(shot.at(48, 48)[1], 100);
    EXPECT_FALSE(shoot(square(0, 255, 0), "--view top").hasAlpha);
}

TEST_F(FltshotStyle, keepsTheColourOfGlassThatIsHalfTransparent)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    flt.push().add("Object", {{"idASCII", "glass"}}).push();
    flt.face(corners, {{"flags", 0x10000000}, {"packedColor", {255, 0, 0, 255}}, {"transparency", 32768}});
    flt.pop().pop().save(directory / "glass.flt");
    ShotFile const shot = shoot(directory / "glass.flt", "--view top --transparent");
    EXPECT_NEAR(shot.alphaAt(48, 48), 128, 4);
    EXPECT_EQ(shot.at(48, 48)[1], 0);
    EXPECT_NEAR(shot.at(48, 48)[0], shoot(square(255, 0, 0), "--view top").at(48, 48)[0], 4);
}

TEST_F(FltshotStyle, writesJpegIfTheNameEndsSo)
{
    std::string const database = square(255, 0, 0);
    for (char const* const name : {"o.jpg", "o.JPEG"}) {
        ProgramRun const run("fltshot", database + " --size 64x32 -o " + (directory / name));
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        std::string const bytes = contentsOf(directory / name);
        EXPECT_EQ(bytes.substr(0, 3), "\xff\xd8\xff");
        EXPECT_EQ(bytes.substr(bytes.size() - 2), "\xff\xd9");
    }
    EXPECT_TRUE(holds(ProgramRun("fltshot", database + " --transparent -o " + (directory / "a.jpg")).errors,
                      "JPEG has no alpha channel"));
    EXPECT_EQ(contentsOf(directory / "a.jpg"), "");
}

TEST_F(FltshotStyle, drawsEdgesAloneAsWireframe)
{
    std::string const options = "--view top --zoom 0.8 --background white ";
    ShotFile const full = shoot(square(255, 0, 0), options);
    ShotFile const wire = shoot(square(255, 0, 0), options + "--wireframe");
    EXPECT_LT(full.at(48, 48)[1], 20);
    auto const inside = wire.meanOf(20, 40, 20, 10);
    EXPECT_GT(inside[1], 200) << "the inside is empty";
    int edges = 0;
    for (unsigned x = 0; x < 96; ++x)
        edges += wire.at(x, 30)[1] < 120 ? 1 : 0;
    EXPECT_GE(edges, 2) << "the left and the right edge";
    EXPECT_LE(edges, 8);
}

TEST_F(FltshotStyle, drawsBothSidesOnRequest)
{
    ShotFile const shot = shoot(square(0, 255, 0), "--from 180,-90 --two-sided");
    EXPECT_GT(shot.patchOf(1).pixels, 8000);
}

TEST_F(FltshotStyle, drawsTheFinestOrTheCoarsestLevelOfDetailOnRequest)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
        corners.push_back(flt.vertex("VertexColor", x, y, 0));
    flt.push();
    auto const add = [&](FltWriter::Fields const& level, std::array<double, 3> const& color) {
        flt.add("LOD", level).push().add("Object").push();
        flt.face(corners, {{"flags", 0x10000000}, {"packedColor", {255, color[2], color[1], color[0]}}});
        flt.pop().pop();
    };
    add(between(0, 3), red);
    add(between(3, 100), green);
    add(between(100, 1000), blue);
    flt.pop().save(directory / "levels.flt");
    std::string const database = directory / "levels.flt";
    EXPECT_GT(shoot(database, "--view top").patchOf(1).pixels, 8000) << "by the distance";
    EXPECT_GT(shoot(database, "--view top --zoom 2").patchOf(0).pixels, 8000);
    EXPECT_GT(shoot(database, "--view top --lod highest").patchOf(0).pixels, 8000);
    EXPECT_GT(shoot(database, "--view top --lod lowest").patchOf(2).pixels, 8000);
}
