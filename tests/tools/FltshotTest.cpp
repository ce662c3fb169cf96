#include "ProgramRun.h"
#include "support/FileSizeLimit.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <png.h>
#include <set>
#include <vector>

namespace
{

/// A picture as fltshot wrote it; no pixels if the file isn't one.
struct Shot {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<unsigned char> pixels;

    explicit Shot(std::string const& path)
    {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
            return;
        image.format = PNG_FORMAT_RGB;
        pixels.resize(PNG_IMAGE_SIZE(image));
        if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0)
            return;
        width = image.width;
        height = image.height;
    }

    std::array<int, 3> at(unsigned x, unsigned y) const
    {
        std::size_t const i = (std::size_t{y} * width + x) * 3;
        return {pixels[i], pixels[i + 1], pixels[i + 2]};
    }

    /// The pixels of a face that is all red (channel 0), green or blue, in whatever light.
    struct Patch {
        int pixels = 0;
        double x = 0; ///< Of the middle, from the left.
        double y = 0; ///< From the top.
    };
    Patch patchOf(std::size_t channel) const
    {
        Patch patch;
        for (unsigned y = 0; y < height; ++y)
            for (unsigned x = 0; x < width; ++x) {
                std::array<int, 3> const color = at(x, y);
                if (color[channel] < 60 || color[(channel + 1) % 3] > 20 || color[(channel + 2) % 3] > 20)
                    continue;
                ++patch.pixels;
                patch.x += x;
                patch.y += y;
            }
        patch.x /= std::max(patch.pixels, 1);
        patch.y /= std::max(patch.pixels, 1);
        return patch;
    }

    std::size_t countColors() const
    {
        std::set<std::array<int, 3>> colors;
        for (unsigned y = 0; y < height; ++y)
            for (unsigned x = 0; x < width; ++x)
                colors.insert(at(x, y));
        return colors.size();
    }
};

class Fltshot : public testing::Test
{
protected:
    struct Square {
        int x;
        int y;
        std::array<double, 3> color;
    };

    /// A database of flat squares about these places, each two wide, to be seen from above.
    std::string squares(std::vector<Square> const& all)
    {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (Square const& square : all)
            for (auto const& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
                corners.push_back(flt.vertex("VertexColor", square.x + x, square.y + y, 0));
        flt.push().add("Object", {{"idASCII", "o1"}}).push();
        for (std::size_t i = 0; i < all.size(); ++i) {
            auto const& [red, green, blue] = all[i].color;
            auto const first = corners.begin() + static_cast<std::ptrdiff_t>(4 * i);
            flt.face({first, first + 4}, {{"flags", 0x10000000}, {"packedColor", {255, blue, green, red}}});
        }
        flt.pop().pop().save(directory / "squares.flt");
        return directory / "squares.flt";
    }

    /// A database of one square about the origin.
    std::string square(double red, double green, double blue)
    {
        return squares({{0, 0, {red, green, blue}}});
    }

    /// The picture of the squares that mark the directions: red in the east, green in the north, blue in the
    /// middle.
    Shot shotOfDirections(std::string const& options)
    {
        std::string const database = squares({{9, 0, {255, 0, 0}}, {0, 9, {0, 255, 0}}, {0, 0, {0, 0, 255}}});
        ProgramRun const run("fltshot",
                             database + " -o " + (directory / "o.png") + " --size 96x96 " + options);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return Shot(directory / "o.png");
    }

    ScratchFolder directory;
};

} // namespace

TEST_F(Fltshot, drawsThePictureInTheAskedSize)
{
    ProgramRun const run("fltshot", square(255, 0, 0) + " -o " + (directory / "o.png") + " --size 160x90");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    Shot const shot(directory / "o.png");
    EXPECT_EQ(shot.width, 160u);
    EXPECT_EQ(shot.height, 90u);
}

TEST_F(Fltshot, drawsAFaceFromAboveInItsColor)
{
    ProgramRun const run("fltshot",
                         square(0, 200, 0) + " -o " + (directory / "o.png") + " --size 64x64 --from 180,90");
    ASSERT_EQ(run.exitCode, 0);
    Shot const shot(directory / "o.png");
    ASSERT_EQ(shot.width, 64u);
    auto const [red, green, blue] = shot.at(32, 32);
    EXPECT_EQ(red, 0);
    EXPECT_GT(green, 100);
    EXPECT_EQ(blue, 0);
}

TEST_F(Fltshot, showsTheSkyBelowWhereSolidFacesTurnTheirBacks)
{
    ProgramRun const run("fltshot",
                         square(0, 200, 0) + " -o " + (directory / "o.png") + " --size 64x64 --from 180,-90");
    ASSERT_EQ(run.exitCode, 0);
    Shot const shot(directory / "o.png");
    ASSERT_EQ(shot.width, 64u);
    EXPECT_GT(shot.at(32, 32)[2], 100);
}

TEST_F(Fltshot, drawsNorthAtTheTopAndEastOnTheRightFromAbove)
{
    Shot const shot = shotOfDirections("--from 180,90");
    Shot::Patch const east = shot.patchOf(0), north = shot.patchOf(1), middle = shot.patchOf(2);
    EXPECT_GT(std::min({east.pixels, north.pixels, middle.pixels}), 50);
    EXPECT_NEAR(north.x, middle.x, 2);
    EXPECT_LT(north.y, middle.y - 20);
    EXPECT_GT(east.x, middle.x + 20);
    EXPECT_NEAR(east.y, middle.y, 2);
}

TEST_F(Fltshot, drawsWhatAViewerInTheEastSees)
{
    Shot const shot = shotOfDirections("--from 90,45");
    Shot::Patch const east = shot.patchOf(0), north = shot.patchOf(1), middle = shot.patchOf(2);
    EXPECT_GT(std::min({east.pixels, north.pixels, middle.pixels}), 50);
    EXPECT_GT(east.pixels, middle.pixels) << "the east is nearest";
    EXPECT_GT(east.y, middle.y + 15);
    EXPECT_GT(north.x, middle.x + 20);
}

TEST_F(Fltshot, drawsWhatAViewerInTheNorthSees)
{
    Shot const shot = shotOfDirections("--from 0,45");
    Shot::Patch const east = shot.patchOf(0), north = shot.patchOf(1), middle = shot.patchOf(2);
    EXPECT_GT(std::min({east.pixels, north.pixels, middle.pixels}), 50);
    EXPECT_GT(north.y, middle.y + 15) << "the north is nearest";
    EXPECT_LT(east.x, middle.x - 20);
}

TEST_F(Fltshot, comesNearerWithZoomAndGoesFartherWithLessThanOne)
{
    std::string const database = square(0, 255, 0);
    auto const pixelsAt = [&](std::string const& zoom) {
        ProgramRun const run("fltshot", database + " -o " + (directory / "o.png") +
                                            " --size 96x96 --from 180,90 --zoom " + zoom);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        return Shot(directory / "o.png").patchOf(1).pixels;
    };
    int const plain = pixelsAt("1");
    EXPECT_GT(plain, 5000) << "nearly the whole picture";
    EXPECT_NEAR(pixelsAt("0.5"), plain / 4.0, plain * 0.03);
    EXPECT_EQ(pixelsAt("2"), 96 * 96);
}

TEST_F(Fltshot, leavesNoHalfOfAPictureOnAFullDisk)
{
    ASSERT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
    FileSizeLimit const full(4096);
    ProgramRun const run("fltshot",
                         (directory / "airfield.flt") + " -o " + (directory / "o.png") + " --size 320x180");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("cannot write: "), std::string::npos) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(directory / "o.png"));
}

TEST_F(Fltshot, drawsTheSampleInManyColors)
{
    ASSERT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
    ProgramRun const run("fltshot", (directory / "airfield.flt") + " -o " + (directory / "airfield.png") +
                                        " --size 320x180");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_GT(Shot(directory / "airfield.png").countColors(), 5000u);
}

TEST_F(Fltshot, exitsWith1ForAFileThatIsNotThere)
{
    ProgramRun const run("fltshot", (directory / "missing.flt") + " -o " + (directory / "o.png"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("cannot open: No such file or directory"), std::string::npos);
    EXPECT_EQ(contentsOf(directory / "o.png"), "");
}

TEST_F(Fltshot, exitsWith1ForADatabaseWithNothingToDraw)
{
    FltWriter().save(directory / "header.flt");
    ProgramRun const run("fltshot", (directory / "header.flt") + " -o " + (directory / "o.png"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("holds nothing that can be drawn"), std::string::npos);
}

TEST_F(Fltshot, exitsWith1ForAPictureThatCanNotBeWritten)
{
    ProgramRun const run("fltshot", square(1, 2, 3) + " --size 16x16 -o " + (directory / "no/o.png"));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.errors.find("cannot write: No such file or directory"), std::string::npos);
}

TEST_F(Fltshot, exitsWith2ForWrongUsage)
{
    std::string const good = square(1, 2, 3) + " -o " + (directory / "o.png");
    EXPECT_EQ(ProgramRun("fltshot", "").exitCode, 2);
    EXPECT_EQ(ProgramRun("fltshot", square(1, 2, 3)).exitCode, 2);
    for (char const* wrong : {"--size 0x5", "--size 64", "--size 64x64x", "--size 9999x10", "--from 1",
                              "--from up,1", "--from nan,1", "--from 1,91", "--zoom 0"})
        EXPECT_EQ(ProgramRun("fltshot", good + " " + wrong).exitCode, 2) << wrong;
    EXPECT_EQ(contentsOf(directory / "o.png"), "");
}

TEST_F(Fltshot, refusesToReplaceItsInputAndEndingsThatItCannotWrite)
{
    std::string const file = square(1, 2, 3);
    std::string const before = contentsOf(file);
    std::filesystem::create_hard_link(file, directory / "same.png");
    for (std::string const& output : {file, directory / "same.png", directory / "a.jpg"})
        EXPECT_EQ(ProgramRun("fltshot", file + " --size 16x16 -o " + output).exitCode, 2) << output;
    EXPECT_EQ(contentsOf(file), before);
    EXPECT_FALSE(std::filesystem::exists(directory / "a.jpg"));
}

TEST_F(Fltshot, writesToStandardOutputAndLeavesDevicesWhereTheyAre)
{
    std::string const file = square(1, 2, 3);
    ProgramRun const run("fltshot", file + " --size 16x16 -o -");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.output.substr(1, 3), "PNG");
    EXPECT_EQ(ProgramRun("fltshot", file + " --size 16x16 -o /dev/full").exitCode, 1);
    EXPECT_EQ(ProgramRun("fltshot", file + " --size 16x16 -o /dev/null").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}
