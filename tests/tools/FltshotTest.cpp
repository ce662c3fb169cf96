#include "ProgramRun.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <array>
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
    /// A database of one square about the origin, seen from above, of one colour.
    std::string square(int red, int green, int blue)
    {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (auto const& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
            corners.push_back(flt.vertex("VertexColor", x, y, 0));
        flt.push().add("Object", {{"idASCII", "o1"}}).push();
        flt.face(corners,
                 {{"flags", 0x10000000}, {"packedColor", {255.0, double(blue), double(green), double(red)}}});
        flt.pop().pop();
        flt.save(directory / "square.flt");
        return directory / "square.flt";
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
