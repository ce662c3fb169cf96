#pragma once

#include "ProgramRun.h"
#include "ShotFile.h"
#include "support/Text.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

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

    ScratchFolder directory;
    std::string const output = directory / "o.png";
};
