#include "visual/FltObjectReader.h"

#include "support/CompleteDatabase.h"

#include <gtest/gtest.h>

namespace
{

using Fields = FltWriter::Fields;
using Time = FltVisualOptions::TimeOfDay;

constexpr unsigned notInDaylight = 0x80000000;
constexpr unsigned notAtDusk = 0x40000000;
constexpr unsigned notAtNight = 0x20000000;
constexpr unsigned notIlluminated = 0x10000000;
constexpr unsigned flatShaded = 0x08000000;
constexpr unsigned groupsShadow = 0x04000000;

/// A lit square whose corners' normals lean to x, in an Object with these flags.
CompleteDatabase leaning(unsigned flags)
{
    CompleteDatabase database;
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair(0.0, 0.0), {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}})
        corners.push_back(
            database.writer.vertex("VertexColorNormal", x, y, 0, {{"vertexNormal", {0.6, 0, 0.8}}}));
    database.begin().add("Object", {{"idASCII", "o"}, {"flags", flags}}).push();
    database.writer.face(corners, CompleteDatabase::face()).pop();
    return database;
}

FltVisualConversion::Result see(CompleteDatabase database, Time time = Time::day)
{
    FltVisualConversion::Options options;
    options.time = time;
    return database.see(options);
}

} // namespace

TEST(FltObjectReader, hidesAnObjectAtTheTimeOfDayThatItsFlagsName)
{
    for (auto const& [flag, hidden] :
         {std::pair(notInDaylight, Time::day), {notAtDusk, Time::dusk}, {notAtNight, Time::night}})
        for (Time const time : {Time::day, Time::dusk, Time::night}) {
            FltVisualConversion::Result const seen = see(leaning(flag), time);
            EXPECT_EQ(seen.root->children.at(0)->isHidden, time == hidden) << flag;
            EXPECT_EQ(seen.leftOut.size(), time == hidden ? 1U : 0U) << flag;
        }
    EXPECT_EQ(see(leaning(notInDaylight)).leftOut.at("Object hidden in daylight"), 1);
    EXPECT_EQ(see(leaning(notAtDusk), Time::dusk).leftOut.at("Object hidden at dusk"), 1);
    EXPECT_EQ(see(leaning(notAtNight), Time::night).leftOut.at("Object hidden at night"), 1);
}

TEST(FltObjectReader, hidesAllThatStandsInAnObject)
{
    CompleteDatabase database;
    std::vector<double> const square = database.square();
    database.begin().add("Object", {{"flags", notInDaylight}}).push();
    database.writer.face(square, CompleteDatabase::face({{"templateBillboard", 2}}));
    database.writer.add("Text", {{"XupperRightCorner", 5}, {"ZupperRightCorner", 2}});
    database.writer.add("Comment", {{"textDescription", "Gate 7"}}).pop();
    EXPECT_EQ(database.see().root->children.at(0)->children.size(), 2U);
    EXPECT_TRUE(database.draw().triangles.empty());
}

TEST(FltObjectReader, showsTheColoursOfAnObjectThatIsNotIlluminatedAsTheyAre)
{
    EXPECT_TRUE(see(leaning(0)).root->children.at(0)->meshes.at(0).isLit);
    FltMesh const unlit = see(leaning(notIlluminated)).root->children.at(0)->meshes.at(0);
    EXPECT_FALSE(unlit.isLit);
    EXPECT_TRUE(unlit.normals.empty());
}

TEST(FltObjectReader, givesAFaceOfAFlatShadedObjectOneNormal)
{
    SbVec3f const leaned(0.6F, 0, 0.8F), up(0, 0, 1);
    EXPECT_TRUE(see(leaning(0)).root->children.at(0)->meshes.at(0).normals.at(0).equals(leaned, 1e-6F));
    EXPECT_TRUE(see(leaning(flatShaded)).root->children.at(0)->meshes.at(0).normals.at(0).equals(up, 1e-6F));
}

TEST(FltObjectReader, saysThatAShadowIsDrawnAsAnyObject)
{
    FltVisualConversion::Result const seen = see(leaning(groupsShadow));
    EXPECT_EQ(seen.leftOut.at("shadow of a group, drawn as any other Object"), 1);
    EXPECT_FALSE(seen.root->children.at(0)->isHidden);
    EXPECT_EQ(seen.root->children.at(0)->meshes.size(), 1U);
    EXPECT_EQ(see(leaning(~groupsShadow)).leftOut.count("shadow of a group, drawn as any other Object"), 0U);
}
