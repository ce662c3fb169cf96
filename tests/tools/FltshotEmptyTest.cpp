// What fltshot says when there is nothing to be seen.

#include "FltshotFixture.h"

using FltshotEmpty = FltshotFixture;

namespace
{

/// A switch whose only mask shows nothing.
std::pair<std::string, FltWriter::Fields> closedSwitch()
{
    return {"Switch",
            {{"idASCII", "off"}, {"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {0}}}};
}

std::pair<std::string, FltWriter::Fields> levelUntil(double farthest)
{
    return {"LOD", {{"idASCII", "near"}, {"switchInDistance", farthest}}};
}

} // namespace

TEST_F(FltshotEmpty, saysThatThereIsNothing)
{
    FltWriter().save(directory / "header.flt");
    EXPECT_TRUE(
        holds(errorOf(directory / "header.flt"), "header.flt: the database holds nothing that can be drawn"));
}

TEST_F(FltshotEmpty, saysThatEverythingIsHidden)
{
    EXPECT_TRUE(holds(errorOf(squaresBelow({closedSwitch()}, {{0, 0, red}})), "everything is hidden"));
    EXPECT_TRUE(holds(errorOf(squares({{0, 0, red}}, "hidden.flt", 0x14000000)), "everything is hidden"));
    EXPECT_TRUE(holds(errorOf(squaresBelow({levelUntil(1000), closedSwitch()}, {{0, 0, red}})),
                      "everything is hidden"));
}

TEST_F(FltshotEmpty, saysThatEverythingIsSeenFromBehind)
{
    std::string const errors = errorOf(square(255, 0, 0) + " --from 180,-90");
    EXPECT_TRUE(holds(errors, "seen from behind")) << errors;
    EXPECT_TRUE(holds(errors, "--two-sided")) << errors;
}

TEST_F(FltshotEmpty, saysThatAFlatModelIsSeenEdgeOn)
{
    for (char const* const options : {"--view front", "--from 45,0", "--view left --two-sided"}) {
        std::string const errors = errorOf(square(255, 0, 0) + " " + options);
        EXPECT_TRUE(holds(errors, "everything in view is edge-on. Choose another view, such as --view top."))
            << options << ": " << errors;
    }
}

TEST_F(FltshotEmpty, saysThatTheLevelsOfDetailHideEverything)
{
    std::string const database = squaresBelow({levelUntil(3)}, {{0, 0, green}});
    std::string const errors = errorOf(database + " --view top");
    EXPECT_TRUE(holds(errors, "hidden by level of detail at this distance")) << errors;
    EXPECT_GT(shoot(database, "--view top --zoom 3").patchOf(1).pixels, 8000);
    EXPECT_GT(shoot(database, "--view top --lod highest").patchOf(1).pixels, 8000);
    std::string const both = errorOf(database + " --from 180,-90");
    EXPECT_TRUE(holds(both, "level of detail at this distance, and seen from behind")) << both;
}

TEST_F(FltshotEmpty, saysThatTheSceneIsOutOfView)
{
    std::string const database = directions();
    for (char const* const options : {"--eye 0,0,50 --look-at 0,0,100", "--eye 0,0,1e7",
                                      "--view top --look-at 5000,0,0", "--look-at 0,0,400 --view iso"}) {
        std::string const errors = errorOf(database + " " + options);
        EXPECT_TRUE(holds(errors, "out of view, or too far away")) << options << ": " << errors;
    }
}

TEST_F(FltshotEmpty, saysThatTheBackgroundHasTheSameColour)
{
    std::string const errors = errorOf(square(0, 0, 0) + " --view top --background black");
    EXPECT_TRUE(holds(errors, "has the colour of the background")) << errors;
}

TEST_F(FltshotEmpty, saysTheSameOfATransparentPictureOrAWireframe)
{
    for (char const* const options : {"--transparent", "--wireframe", "--background white"})
        EXPECT_TRUE(
            holds(errorOf(directions() + " --eye 0,0,50 --look-at 0,0,100 " + options), "out of view"))
            << options;
    EXPECT_TRUE(holds(errorOf(square(255, 0, 0) + " --from 180,-90 --transparent"), "seen from behind"));
}

TEST_F(FltshotEmpty, leavesAnEarlierPictureWhereItIs)
{
    std::string const before = directory.write("o.png", "earlier");
    EXPECT_EQ(ProgramRun("fltshot", square(255, 0, 0) + " --from 180,-90 -o " + before).exitCode, 1);
    EXPECT_EQ(contentsOf(before), "earlier");
}
