// From where fltshot looks, and at what.

#include "FltshotFixture.h"

using FltshotView = FltshotFixture;

TEST_F(FltshotView, looksFromTheNamedSides)
{
    std::string const database = directions();
    EXPECT_EQ(shoot(database, "--view top").pixels, shoot(database, "--from 180,90").pixels);
    EXPECT_EQ(shoot(database, "--view iso").pixels, shoot(database, "--from 135,35.26").pixels);
    ShotFile const top = shoot(database, "--view top");
    EXPECT_LT(top.patchOf(1).y, top.patchOf(2).y - 20) << "north is at the top";
    EXPECT_GT(top.patchOf(0).x, top.patchOf(2).x + 20) << "east is on the right";
    ShotFile const iso = shoot(database, "--view iso");
    EXPECT_GT(std::min(iso.patchOf(0).x, iso.patchOf(1).x), iso.patchOf(2).x + 20) << "both are on the right";
    EXPECT_GT(iso.patchOf(0).y, iso.patchOf(1).y + 10) << "the east is nearer than the north";
}

TEST_F(FltshotView, looksFromTheOtherSidesToo)
{
    std::string const database = sample();
    std::pair<char const*, char const*> const sides[] = {
        {"back", "0,0"}, {"left", "270,0"}, {"right", "90,0"}, {"side", "90,0"}, {"front", "180,0"}};
    for (auto const& [view, from] : sides)
        EXPECT_EQ(shoot(database, std::string("--view ") + view).pixels,
                  shoot(database, std::string("--from ") + from).pixels)
            << view;
    EXPECT_NE(shoot(database, "--view left").pixels, shoot(database, "--view right").pixels);
    ShotFile const bottom = shoot(directions(), "--view bottom --two-sided");
    EXPECT_GT(bottom.patchOf(1).y, bottom.patchOf(2).y + 20) << "south is at the top";
    EXPECT_GT(bottom.patchOf(0).x, bottom.patchOf(2).x + 20) << "east is on the right";
}

TEST_F(FltshotView, seesTheSampleFromTheSouthAndFromTheEast)
{
    std::string const database = sample();
    // The hills are in the north, behind the airfield, or on the right from the east.
    auto const isHill = [](std::array<double, 3> const& color) { return color[2] < 130; };
    ShotFile const front = shoot(database, "--view front");
    EXPECT_TRUE(isHill(front.meanOf(30, 46, 4, 4)));
    ShotFile const side = shoot(database, "--view side");
    EXPECT_FALSE(isHill(side.meanOf(12, 43, 4, 4)));
    EXPECT_TRUE(isHill(side.meanOf(84, 43, 4, 4)));
}

TEST_F(FltshotView, fillsThePictureWithTheNamedPart)
{
    std::string const database = directions();
    ShotFile const shot = shoot(database, "--view top --fit o1");
    EXPECT_EQ(shot.patchOf(0).pixels, 0);
    EXPECT_GT(shot.patchOf(1).pixels, 96 * 96 * 0.85) << "the north alone";
    EXPECT_NEAR(shot.patchOf(1).x, 48, 1.5);
    EXPECT_NEAR(shoot(database, "--view top --fit o1 --zoom 0.5").patchOf(1).pixels,
                shot.patchOf(1).pixels / 4.0, 150);
}

TEST_F(FltshotView, fillsHighPicturesAsItFillsWideOnes)
{
    std::string const database = square(0, 255, 0);
    for (char const* const size : {"96x200", "200x96"}) {
        ProgramRun const run("fltshot", database + " --view top --size " + size + " -o " + output);
        ASSERT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_GT(ShotFile(output).patchOf(1).pixels, 96 * 96 * 0.85) << size;
    }
}

TEST_F(FltshotView, putsANodeOrAPlaceIntoTheMiddle)
{
    std::string const database = directions();
    for (char const* const what : {"o0", "9,0,0"}) {
        ShotFile const shot = shoot(database, std::string("--view top --look-at ") + what);
        EXPECT_NEAR(shot.patchOf(0).x, 48, 1.5) << what;
        EXPECT_NEAR(shot.patchOf(0).y, 48, 1.5) << what;
        EXPECT_LT(shot.patchOf(2).x, 30) << what;
    }
}

TEST_F(FltshotView, standsWhereItIsToldTo)
{
    std::string const database = directions();
    ShotFile const above = shoot(database, "--eye 9,0,20 --look-at o0");
    EXPECT_NEAR(above.patchOf(0).x, 48, 1.5);
    EXPECT_NEAR(above.patchOf(0).y, 48, 1.5);
    EXPECT_LT(above.patchOf(2).x, 20) << "north is at the top when it looks down";

    ShotFile const fromEast = shoot(database, "--eye 40,0,20");
    EXPECT_GT(fromEast.patchOf(0).y, fromEast.patchOf(2).y);
    EXPECT_GT(fromEast.patchOf(1).x, fromEast.patchOf(2).x + 10) << "north is on the right";
    EXPECT_GT(shoot(database, "--eye 40,0,20 --zoom 2").patchOf(2).pixels, fromEast.patchOf(2).pixels * 3);
    EXPECT_TRUE(holds(errorOf(database + " --eye 9,0,0 --look-at o0", 2), "--eye is the place to look at"));
}

TEST_F(FltshotView, saysWhichNamesAreLikeOneThatIsNotThere)
{
    std::string const database = sample();
    EXPECT_TRUE(holds(
        errorOf(database + " --fit Hanger1"),
        "--fit Hanger1: no node of the scene has this name. Names like it: hangar1, hangar2, hangar3."));
    EXPECT_TRUE(holds(errorOf(database + " --look-at towr"), "Names like it: control_tower."));
    EXPECT_TRUE(holds(errorOf(database + " --fit xylophone"), "fltinfo --tree lists the names."));
}

TEST_F(FltshotView, saysThatANamedPartIsEmpty)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "nothing"}}).pop().save(directory / "empty.flt");
    std::string const database = squaresBelow(
        {{"Switch",
          {{"idASCII", "off"}, {"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {2}}}}},
        {{0, 0, red}, {5, 0, green}});
    EXPECT_TRUE(holds(errorOf(database + " --fit o0"), "nothing is drawn below this node"));
    EXPECT_GT(shoot(database, "--view top --fit o1").patchOf(1).pixels, 8000);
}

TEST_F(FltshotView, looksAtPlacesOfADatabaseHoweverFarItIs)
{
    // The same as directions(), at the coordinates of a map.
    std::string const far =
        squares({{4'500'009, 5'300'000, red}, {4'500'000, 5'300'009, green}, {4'500'000, 5'300'000, blue}});
    ShotFile const shot = shoot(far, "--view top --look-at 4500009,5300000,0");
    EXPECT_NEAR(shot.patchOf(0).x, 48, 1.5);
    EXPECT_NEAR(shot.patchOf(0).y, 48, 1.5);
    ShotFile const fromPlace = shoot(far, "--eye 4500000,5299990,40");
    EXPECT_EQ(fromPlace.pixels, shoot(directions(), "--eye 0,-10,40").pixels);
}
