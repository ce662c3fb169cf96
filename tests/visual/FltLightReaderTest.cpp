#include "visual/FltLightReader.h"

#include "support/CompleteDatabase.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using Fields = FltWriter::Fields;
using Kind = FltVisualLight::Kind;

/// A palette's light number 1 after its opcode and length.
std::string paletteLight(int type, float dropoff = 0, float angle = 0, float red = 1, float linear = 2)
{
    std::string body = FltWriter::big32(1) + std::string(232, '\0');
    auto const put = [&body](std::size_t at, std::string const& bytes) {
        body.replace(at - 4, bytes.size(), bytes);
    };
    put(56, FltWriter::bigFloat(red) + FltWriter::bigFloat(0.5F) + FltWriter::bigFloat(-2));
    put(88, FltWriter::big32(type));
    put(132, FltWriter::bigFloat(dropoff) + FltWriter::bigFloat(angle));
    put(148, FltWriter::bigFloat(1) + FltWriter::bigFloat(linear) + FltWriter::bigFloat(3));
    return body;
}

FltVisualLight read(Fields fields, std::string const& palette)
{
    CompleteDatabase database;
    database.writer.addRaw(102, palette);
    fields.emplace_back("flags", std::vector<double>{128, 0, 0, 0});
    fields.emplace_back("indexIntoLightPalette", 1);
    database.begin().add("LightSource", fields);
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    FltVisualLight const* const light = root->children.at(0)->as<FltVisualLight>();
    return light != nullptr ? *light : FltVisualLight();
}

} // namespace

TEST(FltLightReader, knowsTheKindsOfLights)
{
    EXPECT_EQ(read({}, paletteLight(0)).kind, Kind::infinite);
    EXPECT_EQ(read({}, paletteLight(1)).kind, Kind::local);
    EXPECT_EQ(read({}, paletteLight(2)).kind, Kind::spot);
    EXPECT_EQ(read({}, paletteLight(7)).kind, Kind::infinite);
}

TEST(FltLightReader, shinesAlongYTurnedByYawAndLiftedByPitch)
{
    SbVec3f const ahead = read({}, paletteLight(0)).direction;
    EXPECT_TRUE(ahead.equals(SbVec3f(0, 1, 0), 1e-6F));
    SbVec3f const left = read({{"infiniteOrSpotYaw", 90}}, paletteLight(0)).direction;
    EXPECT_TRUE(left.equals(SbVec3f(-1, 0, 0), 1e-6F));
    SbVec3f const up = read({{"infiniteOrSpotPitch", 90}}, paletteLight(0)).direction;
    EXPECT_TRUE(up.equals(SbVec3f(0, 0, 1), 1e-6F));
    double const none = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(read({{"infiniteOrSpotPitch", none}}, paletteLight(0)).direction, SbVec3f(0, 0, -1));
}

TEST(FltLightReader, keepsColoursBetween0And1AndPlacesInDoubles)
{
    FltVisualLight const light =
        read({{"localOrSpotPositionCoordinateX", 4500000.125}}, paletteLight(1, 0, 0, 3));
    EXPECT_EQ(light.color, SbColor(1, 0.5F, 0));
    EXPECT_EQ(light.position[0], 4500000.125);
    EXPECT_EQ(light.attenuation[0], 1);
    EXPECT_EQ(light.attenuation[1], 2);
    EXPECT_EQ(light.attenuation[2], 3);
}

TEST(FltLightReader, fadesByNoNumbersThatWouldMakeItGrow)
{
    for (float const linear : {-1.0F, std::numeric_limits<float>::infinity()}) {
        FltVisualLight const light = read({}, paletteLight(1, 0, 0, 1, linear));
        EXPECT_EQ(light.attenuation[1], 0);
        EXPECT_EQ(light.attenuation[2], 0);
    }
}

TEST(FltLightReader, keepsConesBelowAHalfSphereAndDropOffBelow1)
{
    FltVisualLight const light = read({}, paletteLight(2, 64, 30));
    EXPECT_FLOAT_EQ(light.dropOffRate, 0.5F);
    EXPECT_NEAR(light.cutOffAngle, 0.5235988, 1e-6);
    FltVisualLight const wide = read({}, paletteLight(2, 500, 170));
    EXPECT_EQ(wide.dropOffRate, 1);
    EXPECT_NEAR(wide.cutOffAngle, 1.5707963, 1e-6);
    FltVisualLight const negative = read({}, paletteLight(2, -5, -5));
    EXPECT_EQ(negative.dropOffRate, 0);
    EXPECT_EQ(negative.cutOffAngle, 0);
}

TEST(FltLightReader, takesAWhiteInfiniteLightWhereThePaletteHasNone)
{
    CompleteDatabase database;
    database.begin().add("LightSource", {{"flags", {128, 0, 0, 0}}, {"indexIntoLightPalette", 9}});
    std::shared_ptr<FltVisualNode> const root = database.see().root;
    FltVisualLight const* const light = root->children.at(0)->as<FltVisualLight>();
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->kind, Kind::infinite);
    EXPECT_EQ(light->color, SbColor(1, 1, 1));
}

TEST(FltLightReader, makesNothingOfALightThatIsOff)
{
    CompleteDatabase database;
    database.begin().add("LightSource", {{"flags", {0x7f, 255, 255, 255}}});
    EXPECT_TRUE(database.see().root->children.empty());
}
