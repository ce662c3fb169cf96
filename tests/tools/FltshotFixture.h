#pragma once

#include "ProgramRun.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <png.h>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// A picture as fltshot wrote it; no pixels if the file isn't one.
struct ShotFile {
    unsigned width = 0;
    unsigned height = 0;
    bool hasAlpha = false;
    std::vector<unsigned char> pixels; ///< Four bytes each.

    explicit ShotFile(std::string const& path)
    {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        if (png_image_begin_read_from_file(&image, path.c_str()) == 0)
            return;
        hasAlpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
        image.format = PNG_FORMAT_RGBA;
        pixels.resize(PNG_IMAGE_SIZE(image));
        if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0)
            return;
        width = image.width;
        height = image.height;
    }

    std::array<int, 3> at(unsigned x, unsigned y) const
    {
        std::size_t const i = (std::size_t{y} * width + x) * 4;
        return {pixels[i], pixels[i + 1], pixels[i + 2]};
    }

    int alphaAt(unsigned x, unsigned y) const { return pixels[(std::size_t{y} * width + x) * 4 + 3]; }

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

    /// The mean colour of a rectangle.
    std::array<double, 3> meanOf(unsigned left, unsigned top, unsigned wide, unsigned high) const
    {
        std::array<double, 3> sum{};
        for (unsigned y = top; y < top + high; ++y)
            for (unsigned x = left; x < left + wide; ++x)
                for (std::size_t channel = 0; channel < 3; ++channel)
                    sum[channel] += at(x, y)[channel];
        for (double& part : sum)
            part /= wide * high;
        return sum;
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

/// Runs fltshot on made databases.
class FltshotFixture : public testing::Test
{
protected:
    struct Square {
        int x;
        int y;
        std::array<double, 3> color;
    };
    static constexpr std::array<double, 3> red{255, 0, 0};
    static constexpr std::array<double, 3> green{0, 255, 0};
    static constexpr std::array<double, 3> blue{0, 0, 255};

    /// A database of flat squares about these places, each two wide, to be seen from above. Each is an object
    /// of its own: "o0", "o1" and so on.
    std::string squares(std::vector<Square> const& all, std::string const& name = "squares.flt",
                        unsigned flags = 0x10000000) const
    {
        return squaresBelow({}, all, name, flags);
    }

    /// The same below a record, such as a switch.
    std::string squaresBelow(std::vector<std::pair<std::string, FltWriter::Fields>> const& parents,
                             std::vector<Square> const& all, std::string const& name = "squares.flt",
                             unsigned flags = 0x10000000) const
    {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (Square const& square : all)
            for (auto const& [x, y] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}})
                corners.push_back(flt.vertex("VertexColor", square.x + x, square.y + y, 0));
        flt.push();
        for (auto const& [record, fields] : parents)
            flt.add(record, fields).push();
        for (std::size_t i = 0; i < all.size(); ++i) {
            auto const& [r, g, b] = all[i].color;
            auto const first = corners.begin() + static_cast<std::ptrdiff_t>(4 * i);
            flt.add("Object", {{"idASCII", "o" + std::to_string(i)}})
                .push()
                .face({first, first + 4}, {{"flags", flags}, {"packedColor", {255, b, g, r}}})
                .pop();
        }
        for (std::size_t i = 0; i < parents.size(); ++i)
            flt.pop();
        flt.pop().save(directory.path(name));
        return directory / name;
    }

    /// A database of one square about the origin.
    std::string square(double r, double g, double b) const { return squares({{0, 0, {r, g, b}}}); }

    /// The squares that mark the directions: red in the east, green in the north, blue in the middle.
    std::string directions() const { return squares({{9, 0, red}, {0, 9, green}, {0, 0, blue}}); }

    std::string sample() const
    {
        EXPECT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
        return directory / "airfield.flt";
    }

    /// The picture of a database; what isn't a success is a failure of the test.
    ShotFile shoot(std::string const& database, std::string const& options) const
    {
        ProgramRun const run("fltshot", database + " -o " + output + " --size 96x96 " + options);
        EXPECT_EQ(run.exitCode, 0) << options << ": " << run.errors;
        EXPECT_EQ(run.errors, "") << options;
        return ShotFile(output);
    }

    /// What is said of a picture that can't be made.
    std::string errorOf(std::string const& arguments, int exitCode = 1) const
    {
        std::filesystem::remove(output);
        ProgramRun const run("fltshot", arguments + " -o " + output);
        EXPECT_EQ(run.exitCode, exitCode) << arguments << ": " << run.errors;
        EXPECT_EQ(contentsOf(output), "") << arguments;
        return run.errors;
    }

    static bool holds(std::string const& text, std::string const& part)
    {
        return text.find(part) != std::string::npos;
    }

    ScratchFolder directory;
    std::string const output = directory / "o.png";
};
