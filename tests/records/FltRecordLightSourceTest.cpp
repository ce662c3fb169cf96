#include "records/FltRecordLightSource.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const primary = "PRIMARY_RECORD";
std::string const palette = "PALETTE_RECORD";

FltWriter::Fields const sourceFields = {{"idASCII", "lamp"},
                                        {"indexIntoLightPalette", -3},
                                        {"flags", std::string("\0\0\0\x90", 4)},
                                        {"localOrSpotPositionCoordinateX", 1.5},
                                        {"localOrSpotPositionCoordinateY", -2.5},
                                        {"localOrSpotPositionCoordinateZ", 1e9},
                                        {"infiniteOrSpotYaw", 90},
                                        {"infiniteOrSpotPitch", -0.25}};

FltWriter::Fields const paletteFields = {{"paletteIndex", 4},
                                         {"lightSourceName", "sun"},
                                         {"ambientRed", 1},
                                         {"ambientGreen", 2},
                                         {"ambientBlue", 3},
                                         {"ambientAlpha", 4},
                                         {"diffuseRed", 5},
                                         {"diffuseGreen", 6},
                                         {"diffuseBlue", 7},
                                         {"diffuseAlpha", 8},
                                         {"specularRed", 9},
                                         {"specularGreen", 10},
                                         {"specularBlue", 11},
                                         {"specularAlpha", 12},
                                         {"lightType", 2},
                                         {"spotExponentialDropoffTerm", 0.5},
                                         {"spotCutoffAngle", 45.5},
                                         {"yaw", -90},
                                         {"pitch", 30},
                                         {"constantAttenuationCoefficient", 0.125},
                                         {"linearAttenuationCoefficient", 0.25},
                                         {"quadraticAttenuationCoefficient", 0.375},
                                         {"modelingLight", -1}};

FltWriter::Fields const pointFields = {{"idASCII", "point"},
                                       {"surfaceMaterial", -5},
                                       {"featureID", 6},
                                       {"backColor", std::string("\x00\x33\x66\xff", 4)},
                                       {"displayMode", 1},
                                       {"frontIntensity", 0.5},
                                       {"backIntensity", 0.25},
                                       {"minDefocus", 0.125},
                                       {"maxDefocus", 1.5},
                                       {"fadeMode", 2},
                                       {"fogPunchMode", 3},
                                       {"directionalMode", 4},
                                       {"rangeMode", -7},
                                       {"minPixelSize", 8.5},
                                       {"maxPixelSize", 9.5},
                                       {"actualPixelSize", 10.5},
                                       {"transpFalloff", 11.5},
                                       {"transpFalloffExponent", 12.5},
                                       {"transpFalloffScalar", 13.5},
                                       {"transpFalloffClamp", 14.5},
                                       {"fog", 15.5},
                                       {"size", 16.5},
                                       {"direction", 17},
                                       {"lobeHorizontal", 18.5},
                                       {"lobeVertical", 19.5},
                                       {"lobeRoll", 20.5},
                                       {"falloff", 21.5},
                                       {"ambientIntensity", 22.5},
                                       {"animPeriod", 23.5},
                                       {"animPhaseDelay", 24.5},
                                       {"animEnabledPeriod", 25.5},
                                       {"significance", 26.5},
                                       {"drawOrder", -27},
                                       {"flags", 0x80000001U},
                                       {"animRotation", {28.5, -29.5, 30}}};

/// The lines of a record's dump from @p first up to and without @p behind.
std::string linesBetween(FltWriter const& flt, std::string const& first, std::string const& behind)
{
    std::string const lines = linesOf(flt);
    std::size_t const begin = lines.find(first);
    return lines.substr(begin, lines.find(behind) - begin);
}

TEST(FltRecordLightSourceTest, DecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordLightSource>(FltWriter().add("LightSource", sourceFields));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "lamp");
    EXPECT_EQ(record->indexIntoLightPalette, -3);
    EXPECT_EQ(record->flags[0], 0);
    EXPECT_EQ(record->flags[3], 0x90);
    EXPECT_EQ(record->localOrSpotPositionCoordinateX, 1.5);
    EXPECT_EQ(record->localOrSpotPositionCoordinateY, -2.5);
    EXPECT_EQ(record->localOrSpotPositionCoordinateZ, 1e9);
    EXPECT_EQ(record->infiniteOrSpotYaw, 90.0F);
    EXPECT_EQ(record->infiniteOrSpotPitch, -0.25F);
    EXPECT_EQ(dumpOf(*record), frame("\n LIGHT SOURCE RECORD ", primary, 101, 64) +
                                   "idASCII: lamp\n"
                                   "indexIntoLightPalette: -3\n"
                                   "flags: \n"
                                   "     enabled: 1\n"
                                   "     global: 0\n"
                                   "     export: 1\n"
                                   "localOrSpotPositionCoordinateX: 1.5\n"
                                   "localOrSpotPositionCoordinateY: -2.5\n"
                                   "localOrSpotPositionCoordinateZ: 1e+09\n"
                                   "infiniteOrSpotYaw: 90\n"
                                   "infiniteOrSpotPitch: -0.25\n");
}

TEST(FltRecordLightSourceTest, OnlyTheByteAtOffset27CountsForTheFlags)
{
    auto const flags = [](std::string const& bytes) {
        return linesBetween(FltWriter().add("LightSource", {{"flags", bytes}}), "flags", "local");
    };
    EXPECT_EQ(flags(std::string("\xff\xff\xff\x00", 4)), "flags: \n"
                                                         "     enabled: 0\n"
                                                         "     global: 0\n"
                                                         "     export: 0\n");
    EXPECT_EQ(flags(std::string("\x00\x00\x00\x40", 4)), "flags: \n"
                                                         "     enabled: 0\n"
                                                         "     global: 1\n"
                                                         "     export: 0\n");
    EXPECT_EQ(flags(std::string("\x00\x00\x00\x2f", 4)), "flags: \n"
                                                         "     enabled: 0\n"
                                                         "     global: 0\n"
                                                         "     export: 0\n");
}

TEST(FltRecordLightSourceTest, AnIdThatMeetsNoZeroAtAllEndsWithTheLastMember)
{
    std::string const lines = linesOf(FltWriter().addRaw(101, std::string(60, 'i')));
    EXPECT_EQ(lines.substr(0, lines.find('\n')), "idASCII: " + std::string(60, 'i'));
}

TEST(FltRecordLightSourceTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(FltWriter().add("LightSource", sourceFields));
}

TEST(FltRecordLightSourceTest, ARecordOfLength12BeforeALevelReadsTheLevelAsItsIndex)
{
    auto const record = decodeLastAs<FltRecordLightSource>(
        FltWriter()
            .add("LightSource", sourceFields)
            .resizeLast(12)
            .addBytes(FltWriter().push().lastRecord() + FltWriter().pop().lastRecord()));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "lamp");
    EXPECT_EQ(record->reserved1, 10 << 16 | 4);
    EXPECT_EQ(record->indexIntoLightPalette, 11 << 16 | 4);
    EXPECT_EQ(record->flags[3], 0);
    EXPECT_EQ(record->infiniteOrSpotPitch, 0.0F);
}

TEST(FltRecordLightSourcePaletteTest, DecodesEveryField)
{
    auto const record =
        decodeLastAs<FltRecordLightSourcePalette>(FltWriter().add("LightSourcePalette", paletteFields));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->paletteIndex, 4);
    EXPECT_STREQ(record->lightSourceName, "sun");
    EXPECT_EQ(record->ambientRed, 1.0F);
    EXPECT_EQ(record->ambientGreen, 2.0F);
    EXPECT_EQ(record->ambientBlue, 3.0F);
    EXPECT_EQ(record->ambientAlpha, 4.0F);
    EXPECT_EQ(record->diffuseRed, 5.0F);
    EXPECT_EQ(record->diffuseGreen, 6.0F);
    EXPECT_EQ(record->diffuseBlue, 7.0F);
    EXPECT_EQ(record->diffuseAlpha, 8.0F);
    EXPECT_EQ(record->specularRed, 9.0F);
    EXPECT_EQ(record->specularGreen, 10.0F);
    EXPECT_EQ(record->specularBlue, 11.0F);
    EXPECT_EQ(record->specularAlpha, 12.0F);
    EXPECT_EQ(record->lightType, 2);
    EXPECT_EQ(record->spotExponentialDropoffTerm, 0.5F);
    EXPECT_EQ(record->spotCutoffAngle, 45.5F);
    EXPECT_EQ(record->yaw, -90.0F);
    EXPECT_EQ(record->pitch, 30.0F);
    EXPECT_EQ(record->constantAttenuationCoefficient, 0.125F);
    EXPECT_EQ(record->linearAttenuationCoefficient, 0.25F);
    EXPECT_EQ(record->quadraticAttenuationCoefficient, 0.375F);
    EXPECT_EQ(record->modelingLight, -1);
}

TEST(FltRecordLightSourcePaletteTest, DumpsEveryFieldBehindABlank)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().add("LightSourcePalette", paletteFields))),
              frame("\n LIGHT SOURCE PALETTE RECORD ", palette, 102, 210) +
                  " paletteIndex: 4\n"
                  " lightSourceName: sun\n"
                  " ambientRed: 1\n"
                  " ambientGreen: 2\n"
                  " ambientBlue: 3\n"
                  " ambientAlpha : 4\n"
                  " diffuseRed : 5\n"
                  " diffuseGreen : 6\n"
                  " diffuseBlue: 7\n"
                  " diffuseAlpha: 8\n"
                  " specularRed: 9\n"
                  " specularGreen: 10\n"
                  " specularBlue: 11\n"
                  " specularAlpha: 12\n"
                  " lightType: 2\n"
                  " spotExponentialDropoffTerm : 0.5\n"
                  " spotCutoffAngle: 45.5\n"
                  " yaw: -90\n"
                  " pitch: 30\n"
                  " constantAttenuationCoefficient: 0.125\n"
                  " linearAttenuationCoefficient: 0.25\n"
                  " quadraticAttenuationCoefficient: 0.375\n"
                  " modelingLight: -1\n");
}

TEST(FltRecordLightSourcePaletteTest, SpotExponentialDropoffTermIsReadFromOffset102)
{
    std::string bytes(206, '\0');
    bytes.replace(102 - 4, 4, FltWriter::bigFloat(2.5));
    auto const record = decodeLastAs<FltRecordLightSourcePalette>(FltWriter().addRaw(102, bytes));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->spotExponentialDropoffTerm, 2.5F);
    EXPECT_EQ(record->spotCutoffAngle, 0.0F);
    EXPECT_EQ(record->lightType, 0);
}

TEST(FltRecordLightSourcePaletteTest, TheReservedBlockAtOffset92Takes10BytesAndTheOneAt134Takes76)
{
    std::string bytes(206, '\0');
    bytes.replace(92 - 4, 10, std::string(10, 'a'));
    bytes.replace(134 - 4, 76, std::string(76, 'b'));
    auto const record = decodeLastAs<FltRecordLightSourcePalette>(FltWriter().addRaw(102, bytes));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(std::string(record->reserved3, sizeof record->reserved3),
              std::string(10, 'a') + std::string(30, '\0'));
    EXPECT_EQ(std::string(record->reserved4, sizeof record->reserved4), std::string(76, 'b'));
    EXPECT_EQ(record->spotExponentialDropoffTerm, 0.0F);
    EXPECT_EQ(record->modelingLight, 0);
}

TEST(FltRecordLightSourcePaletteTest, ANameWithoutAZeroRunsOnIntoTheMembersBehindIt)
{
    EXPECT_EQ(
        linesBetween(FltWriter().add("LightSourcePalette", {{"lightSourceName", "exactly twenty chars"}}),
                     " lightSourceName", " ambientRed"),
        " lightSourceName: exactly twenty chars\n");
    std::string const lines = linesOf(FltWriter().addRaw(102, std::string(206, 'n')));
    EXPECT_EQ(lines.substr(lines.find('\n') + 1, 19 + 20 + 4 + 48 + 4 + 10),
              " lightSourceName: " + std::string(20 + 4 + 48 + 4 + 10, 'n') + "\n");
}

TEST(FltRecordLightSourcePaletteTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(FltWriter().add("LightSourcePalette", paletteFields));
}

TEST(FltRecordWholeLightSourcePaletteTest, HasWhatFollowsTheReservedBlockAfterAllOfItsFortyBytes)
{
    std::string body(240 - 4, '\0');
    body.replace(88 - 4, 4, FltWriter::big32(2));
    body.replace(132 - 4, 8, FltWriter::bigFloat(3) + FltWriter::bigFloat(4));
    body.replace(148 - 4, 12, FltWriter::bigFloat(5) + FltWriter::bigFloat(6) + FltWriter::bigFloat(7));
    std::string bytes = FltWriter::big16(102) + FltWriter::big16(240) + body;
    FltRecordWholeLightSourcePalette light(240);
    light.getPropertiesFromData(bytes.data());
    EXPECT_EQ(light.lightType, 2);
    EXPECT_EQ(light.spotExponentialDropoffTerm, 3);
    EXPECT_EQ(light.spotCutoffAngle, 4);
    EXPECT_EQ(light.constantAttenuationCoefficient, 5);
    EXPECT_EQ(light.linearAttenuationCoefficient, 6);
    EXPECT_EQ(light.quadraticAttenuationCoefficient, 7);
}

TEST(FltRecordLightPointTest, DecodesEveryField)
{
    auto const record = decodeLastAs<FltRecordLightPoint>(FltWriter().add("LightPoint", pointFields));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "point");
    EXPECT_EQ(record->surfaceMaterial, -5);
    EXPECT_EQ(record->featureID, 6);
    EXPECT_EQ(record->backColor[1], 0x33);
    EXPECT_EQ(record->backColor[3], 0xff);
    EXPECT_EQ(record->displayMode, 1);
    EXPECT_EQ(record->frontIntensity, 0.5F);
    EXPECT_EQ(record->backIntensity, 0.25F);
    EXPECT_EQ(record->minDefocus, 0.125F);
    EXPECT_EQ(record->maxDefocus, 1.5F);
    EXPECT_EQ(record->fadeMode, 2);
    EXPECT_EQ(record->fogPunchMode, 3);
    EXPECT_EQ(record->directionalMode, 4);
    EXPECT_EQ(record->rangeMode, -7);
    EXPECT_EQ(record->minPixelSize, 8.5F);
    EXPECT_EQ(record->maxPixelSize, 9.5F);
    EXPECT_EQ(record->actualPixelSize, 10.5F);
    EXPECT_EQ(record->transpFalloff, 11.5F);
    EXPECT_EQ(record->transpFalloffExponent, 12.5F);
    EXPECT_EQ(record->transpFalloffScalar, 13.5F);
    EXPECT_EQ(record->transpFalloffClamp, 14.5F);
    EXPECT_EQ(record->fog, 15.5F);
    EXPECT_EQ(record->size, 16.5F);
    EXPECT_EQ(record->direction, 17);
    EXPECT_EQ(record->lobeHorizontal, 18.5F);
    EXPECT_EQ(record->lobeVertical, 19.5F);
    EXPECT_EQ(record->lobeRoll, 20.5F);
    EXPECT_EQ(record->falloff, 21.5F);
    EXPECT_EQ(record->ambientIntensity, 22.5F);
    EXPECT_EQ(record->animPeriod, 23.5F);
    EXPECT_EQ(record->animPhaseDelay, 24.5F);
    EXPECT_EQ(record->animEnabledPeriod, 25.5F);
    EXPECT_EQ(record->significance, 26.5F);
    EXPECT_EQ(record->drawOrder, -27);
    EXPECT_EQ(record->flags, INT32_MIN + 1);
    EXPECT_EQ(record->animRotation[0], 28.5F);
    EXPECT_EQ(record->animRotation[1], -29.5F);
    EXPECT_EQ(record->animRotation[2], 30.0F);
}

TEST(FltRecordLightPointTest, DumpsEveryFieldInTheOrderOfTheFile)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().add("LightPoint", pointFields))),
              frame("\n LIGHT POINT RECORD ", primary, 111, 156) + "idASCII: point\n"
                                                                   "surfaceMaterial: -5\n"
                                                                   "featureID: 6\n"
                                                                   "backColor (ABGR) : 1 0.4 0.2 0\n"
                                                                   "displayMode: 1\n"
                                                                   "frontIntensity: 0.5\n"
                                                                   "backIntensity: 0.25\n"
                                                                   "minDefocus: 0.125\n"
                                                                   "maxDefocus: 1.5\n"
                                                                   "fadeMode: 2\n"
                                                                   "fogPunchMode: 3\n"
                                                                   "directionalMode: 4\n"
                                                                   "rangeMode: -7\n"
                                                                   "minPixelSize: 8.5\n"
                                                                   "maxPixelSize: 9.5\n"
                                                                   "actualPixelSize: 10.5\n"
                                                                   "transpFalloff: 11.5\n"
                                                                   "transpFalloffExponent: 12.5\n"
                                                                   "transpFalloffScalar: 13.5\n"
                                                                   "transpFalloffClamp: 14.5\n"
                                                                   "fog: 15.5\n"
                                                                   "size: 16.5\n"
                                                                   "direction: 17\n"
                                                                   "lobeHorizontal: 18.5\n"
                                                                   "lobeVertical: 19.5\n"
                                                                   "lobeRoll: 20.5\n"
                                                                   "falloff: 21.5\n"
                                                                   "ambientIntensity: 22.5\n"
                                                                   "animPeriod: 23.5\n"
                                                                   "animPhaseDelay: 24.5\n"
                                                                   "animEnabledPeriod: 25.5\n"
                                                                   "significance: 26.5\n"
                                                                   "drawOrder: -27\n"
                                                                   "flags: 0xffffffff80000001\n"
                                                                   "animRotation: 28.5 -29.5 30\n");
}

TEST(FltRecordLightPointTest, FlagsOfZeroPrintTheStreamsNullPointer)
{
    EXPECT_EQ(linesBetween(FltWriter().add("LightPoint"), "flags", "animRotation"), "flags: 0\n");
}

TEST(FltRecordLightPointTest, AnIdThatMeetsNoZeroAtAllEndsWithTheLastMember)
{
    std::string const lines = linesOf(FltWriter().addRaw(111, std::string(152, 'i')));
    EXPECT_EQ(lines.substr(0, lines.find('\n')), "idASCII: " + std::string(152, 'i'));
}

TEST(FltRecordLightPointTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(FltWriter().add("LightPoint", pointFields));
}

} // namespace
