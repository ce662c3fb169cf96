#include "ProgramRun.h"
#include "loader/FltLoader.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <gtest/gtest.h>

namespace
{

/// What is drawn below the first node of this name, in the world.
SbBox3f boxOf(FltScene const& scene, char const* name)
{
    SoSearchAction search;
    search.setName(name);
    search.setSearchingAll(true);
    search.apply(scene.root());
    SoGetBoundingBoxAction bounds{SbViewportRegion()};
    if (search.getPath() != nullptr)
        bounds.apply(search.getPath());
    return bounds.getBoundingBox();
}

} // namespace

TEST(MakeSample, writesTheSameBytesEveryTime)
{
    ScratchFolder const first, second;
    ASSERT_EQ(ProgramRun("make_sample", first / "airfield.flt").exitCode, 0);
    ASSERT_EQ(ProgramRun("make_sample", second / "airfield.flt").exitCode, 0);
    for (char const* file : {"airfield.flt", "airfield/terminal.flt", "airfield/asphalt.png",
                             "airfield/corrugation.rgb", "airfield/windows.png"}) {
        EXPECT_NE(contentsOf(first / file), "") << file;
        EXPECT_EQ(contentsOf(first / file), contentsOf(second / file)) << file;
    }
}

TEST(MakeSample, convertsWithoutAWarningAndShowsWhatTheFormatOffers)
{
    ScratchFolder const directory;
    ASSERT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
    ProgramRun const run("flt2iv", "--exact " + (directory / "airfield.flt"));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.errors, "");
    for (char const* part :
         {"LOD {", "PolygonOffset {", "DEF Replications", "InstanceDefinition_1", "DEF radar",
          "beacon_(flt_switch)", "From OpenFlight File:  airfield/terminal.flt", "airfield/asphalt.png",
          "airfield/corrugation.rgb", "airfield/windows.png", "faceVertexColorSoMaterialSet",
          "faceVertexColorNormalSoMaterialSet", "faceVertexColorUVSoMaterialSet",
          "faceVertexColorNormalUVSoMaterialSet"})
        EXPECT_NE(run.output.find(part), std::string::npos) << part;
}

TEST(MakeSample, hasARadarThatTurnsOnItsMast)
{
    ScratchFolder const directory;
    ASSERT_EQ(ProgramRun("make_sample", directory / "airfield.flt").exitCode, 0);
    FltScene scene = FltLoader().load(directory / "airfield.flt");
    std::vector<FltDegreeOfFreedom> const joints = scene.degreesOfFreedom();
    auto const radar =
        std::find_if(joints.begin(), joints.end(), [](auto const& joint) { return joint.name == "radar"; });
    ASSERT_NE(radar, joints.end());
    SbBox3f const before = boxOf(scene, "radar");
    ASSERT_FALSE(before.isEmpty());

    FltDegreeOfFreedom turned = *radar;
    turned.yaw.current = 180;
    ASSERT_TRUE(scene.move(static_cast<std::size_t>(radar - joints.begin()), turned));
    SbBox3f const after = boxOf(scene, "radar");
    EXPECT_NE(before.getMax(), after.getMax());
    float const width = (before.getMax() - before.getMin()).length();
    EXPECT_LT((after.getCenter() - before.getCenter()).length(), width / 2);
}

TEST(MakeSample, exitsWith1WhereItCanNotWriteAnd2ForWrongUsage)
{
    EXPECT_EQ(ProgramRun("make_sample", "/dev/null/airfield.flt").exitCode, 1);
    EXPECT_EQ(ProgramRun("make_sample", "--nonsense").exitCode, 2);
}

TEST(MakeSample, overwritesNothingUnlessForced)
{
    ScratchFolder const directory;
    std::string const texture = directory.write("airfield/windows.png", "mine");
    ProgramRun const run("make_sample", directory / "airfield.flt");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_NE(run.errors.find("Add --force to replace it."), std::string::npos);
    EXPECT_EQ(contentsOf(texture), "mine");
    EXPECT_EQ(contentsOf(directory / "airfield.flt"), "");
    EXPECT_EQ(ProgramRun("make_sample", "--force " + (directory / "airfield.flt")).exitCode, 0);
    EXPECT_NE(contentsOf(texture), "mine");
}
