// What flt2iv makes of databases that refer to each other.

#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "support/Text.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{

class Flt2ivReferences : public testing::Test
{
protected:
    std::string database(std::string const& name, std::vector<std::string> const& references = {},
                         int units = 0) const
    {
        return folder.write(name, SmallDatabase{references, "", units}.bytes());
    }

    std::string output(std::string const& name) const { return folder.path("out/" + name); }

    bool isThere(std::string const& name) const { return std::filesystem::exists(folder / ("out/" + name)); }

    ScratchFolder folder;
};

} // namespace

TEST_F(Flt2ivReferences, becomePartsOfTheResultByDefault)
{
    database("tower.flt");
    std::string const main = database("main.flt", {"tower.flt", "tower.flt"});
    EXPECT_EQ(ProgramRun("flt2iv", "-o " + output("main.iv") + " " + main).exitCode, 0);
    EXPECT_EQ(trianglesIn(output("main.iv")), 3);
    EXPECT_EQ(ProgramRun("flt2iv", "--xref inline " + main).output, ProgramRun("flt2iv", main).output);
}

TEST_F(Flt2ivReferences, areLeftOutOnRequest)
{
    database("tower.flt");
    std::string const main = database("main.flt", {"tower.flt"});
    EXPECT_EQ(ProgramRun("flt2iv", "--xref skip -o " + output("main.iv") + " " + main).exitCode, 0);
    EXPECT_EQ(trianglesIn(output("main.iv")), 1);
}

TEST_F(Flt2ivReferences, becomeFilesOfTheirOwnBesideTheResult)
{
    database("parts/lamp.flt");
    database("parts/tower.flt", {"lamp.flt"});
    std::string const main = database("main.flt", {"parts/tower.flt", "parts\\tower.flt", "parts/lamp.flt"});
    for (char const* const ending : {".iv", ".wrl"}) {
        std::string const result = output(std::string("city") + ending);
        ProgramRun const run("flt2iv", "--xref file -o " + result + " " + main);
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.output, "3 of 3 databases converted\n") << "each once";
        EXPECT_TRUE(holds(contentsOf(result), std::string("\"parts/tower") + ending + "\""));
        EXPECT_FALSE(holds(contentsOf(result), ".flt\""));
        EXPECT_EQ(trianglesIn(output(std::string("parts/tower") + ending)), 2);
        EXPECT_EQ(trianglesIn(result), 6) << "itself, two towers with a lamp each, and a lamp";
    }
}

TEST_F(Flt2ivReferences, keepTheTreeOfDirectories)
{
    database("models/cars/car.flt", {"../wheels/wheel.flt"});
    database("models/wheels/wheel.flt");
    ProgramRun const run("flt2iv", "--xref file -o " + (folder / "out") + " " + (folder / "models"));
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(run.output, "2 of 2 databases converted\n");
    EXPECT_TRUE(holds(contentsOf(output("cars/car.iv")), "\"../wheels/wheel.iv\""));
    EXPECT_EQ(trianglesIn(output("cars/car.iv")), 2);
}

TEST_F(Flt2ivReferences, fromElsewhereStandInTheOutputDirectory)
{
    database("library/tree.flt");
    database("garden/tree.flt");
    database("models/park.flt", {"../library/tree.flt", "../garden/tree.flt"});
    ProgramRun const run("flt2iv", "--xref file -o " + (folder / "out") + " " + (folder / "models"));
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_TRUE(isThere("tree.iv") && isThere("tree-2.iv"));
    EXPECT_EQ(trianglesIn(output("park.iv")), 3);
}

TEST_F(Flt2ivReferences, thatWouldCloseACircleAreLeftOutAndReported)
{
    database("a.flt", {"b.flt", "a.flt"});
    database("b.flt", {"c.flt"});
    database("c.flt", {"a.flt"});
    for (std::string const& ending : {std::string("iv"), std::string("wrl")}) {
        ProgramRun const run("flt2iv",
                             "--xref file --to " + ending + " -o " + output("") + " " + (folder / "a.flt"));
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.output, "3 of 3 databases converted\n");
        EXPECT_TRUE(holds(run.errors, "a.flt: 1 reference is left out")) << run.errors;
        EXPECT_TRUE(holds(run.errors, "c.flt: 1 reference is left out")) << run.errors;
        EXPECT_EQ(trianglesIn(output("a." + ending)), 3);
        EXPECT_EQ(trianglesIn(output("c." + ending)), 1);
    }
}

TEST_F(Flt2ivReferences, areOfTheSameSizeInFilesOfTheirOwn)
{
    database("feet.flt", {}, 4);
    std::string const main = database("main.flt", {"feet.flt"}, 1);
    EXPECT_EQ(ProgramRun("flt2iv", "-o " + output("one.iv") + " " + main).exitCode, 0);
    EXPECT_EQ(ProgramRun("flt2iv", "--xref file -o " + output("two.iv") + " " + main).exitCode, 0);
    DrawnScene const one(sceneIn(output("one.iv")).get());
    DrawnScene const two(sceneIn(output("two.iv")).get());
    EXPECT_EQ(one.triangles.size(), 2U);
    EXPECT_EQ(two.triangles.size(), 2U);
    EXPECT_NEAR(one.area(), two.area(), 1e-3 * one.area());
}

TEST_F(Flt2ivReferences, behindADamagedPlaceAreFound)
{
    database("tower.flt");
    FltWriter flt = SmallDatabase().written();
    flt.addBytes(std::string(64, '\0'));
    std::string const tail = SmallDatabase{{"tower.flt"}, "", 0}.bytes();
    std::string const main = folder.write("main.flt", flt.bytes() + tail);
    EXPECT_EQ(ProgramRun("flt2iv", "-q -o " + output("one.iv") + " " + main).exitCode, 0);
    EXPECT_EQ(ProgramRun("flt2iv", "-q --xref file -o " + output("two.iv") + " " + main).exitCode, 0);
    EXPECT_GT(trianglesIn(output("one.iv")), 1) << "the salvage reaches the reference";
    EXPECT_EQ(trianglesIn(output("two.iv")), trianglesIn(output("one.iv")));
}

TEST_F(Flt2ivReferences, thatCanNotBeConvertedAreReported)
{
    folder.write("bad.flt", "no database");
    std::string const main = database("main.flt", {"bad.flt", "lost.flt"});
    ProgramRun const run("flt2iv", "--xref file -o " + output("main.iv") + " " + main);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.errors, "bad.flt: not an OpenFlight database")) << run.errors;
    EXPECT_TRUE(holds(run.errors, "flt2iv: 1 of 2 databases converted\n")) << run.errors;
    EXPECT_TRUE(isThere("main.iv"));
    EXPECT_FALSE(isThere("bad.iv"));
}

TEST_F(Flt2ivReferences, asFilesNeedAFileAndMetresAndTheCompleteConversion)
{
    std::string const main = database("main.flt");
    for (std::string const& options :
         {std::string(), "--units stored -o " + output("a.iv"), "--origin centre -o " + output("a.iv"),
          "--exact -o " + output("a.iv"), std::string("-o -"), std::string("-o /dev/null")}) {
        ProgramRun const run("flt2iv", "--xref file " + options + " " + main);
        EXPECT_EQ(run.exitCode, 2) << options;
        EXPECT_EQ(run.output, "") << options;
    }
    EXPECT_FALSE(isThere("a.iv"));
}
