#include "records/FltRecordBoundingVolume.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const ancillary = "ANCILLARY_RECORD";

FltWriter::Fields const corners = {{"XcoordinateLowestCorner", -1},  {"YcoordinateLowestCorner", -2},
                                   {"ZcoordinateLowestCorner", -3},  {"XcoordinateHighestCorner", 4},
                                   {"YcoordinateHighestCorner", 50}, {"ZcoordinateHighestCorner", 600000}};

std::string const cornerLines = "XcoordinateLowestCorner: -1\n"
                                "YcoordinateLowestCorner: -2\n"
                                "ZcoordinateLowestCorner: -3\n"
                                "XcoordinateHighestCorner: 4\n"
                                "YcoordinateHighestCorner: 50\n"
                                "ZcoordinateHighestCorner: 600000\n";

/// The same record with a reserved word that isn't zero.
FltWriter withReservedWord(FltWriter const& flt)
{
    std::string const record = flt.lastRecord();
    return FltWriter().addRaw(static_cast<unsigned char>(record[1]),
                              FltWriter::big32(0x12345678) + record.substr(8));
}

TEST(FltRecordBoundingVolumeTest, TheOldBoxHasNoReservedWordAndItsFirstCornerStandsAtOffset4)
{
    FltWriter const flt = FltWriter().add("OldBoundingBox", corners);
    EXPECT_EQ(flt.lastRecord().substr(4, 4), FltWriter::big32(-1));
    auto const record = decodeLastAs<FltRecordOldBoundingBox>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->XcoordinateLowestCorner, -1);
    EXPECT_EQ(record->YcoordinateLowestCorner, -2);
    EXPECT_EQ(record->ZcoordinateLowestCorner, -3);
    EXPECT_EQ(record->XcoordinateHighestCorner, 4);
    EXPECT_EQ(record->YcoordinateHighestCorner, 50);
    EXPECT_EQ(record->ZcoordinateHighestCorner, 600000);
    EXPECT_EQ(dumpOf(*record), frame("\n OLD BOUNDING BOX ", ancillary, 51, 28) + cornerLines);
}

TEST(FltRecordBoundingVolumeTest, TheBoxHasItsCornersBehindAReservedWord)
{
    auto const record =
        decodeLastAs<FltRecordBoundingBox>(withReservedWord(FltWriter().add("BoundingBox", corners)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x12345678);
    EXPECT_EQ(record->XcoordinateLowestCorner, -1.0);
    EXPECT_EQ(record->YcoordinateLowestCorner, -2.0);
    EXPECT_EQ(record->ZcoordinateLowestCorner, -3.0);
    EXPECT_EQ(record->XcoordinateHighestCorner, 4.0);
    EXPECT_EQ(record->YcoordinateHighestCorner, 50.0);
    EXPECT_EQ(record->ZcoordinateHighestCorner, 600000.0);
    EXPECT_EQ(dumpOf(*record), frame("\n BOUNDING BOX ", ancillary, 74, 56) + cornerLines);
}

TEST(FltRecordBoundingVolumeTest, TheBoxHasFractionsInTheStreamsForm)
{
    EXPECT_EQ(linesOf(FltWriter().add("BoundingBox", {{"XcoordinateLowestCorner", 0.1},
                                                      {"YcoordinateLowestCorner", 1234567.0},
                                                      {"ZcoordinateLowestCorner", -1.0 / 3}})),
              "XcoordinateLowestCorner: 0.1\n"
              "YcoordinateLowestCorner: 1.23457e+06\n"
              "ZcoordinateLowestCorner: -0.333333\n"
              "XcoordinateHighestCorner: 0\n"
              "YcoordinateHighestCorner: 0\n"
              "ZcoordinateHighestCorner: 0\n");
}

TEST(FltRecordBoundingVolumeTest, TheSpherePrintsOnlyItsTitleLinesAndItsRadius)
{
    auto const record = decodeLastAs<FltRecordBoundingVolumeSphere>(
        withReservedWord(FltWriter().add("BoundingVolumeSphere", {{"radius", 12.5}})));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x12345678);
    EXPECT_EQ(record->radius, 12.5);
    EXPECT_EQ(dumpOf(*record), frame("\n BOUNDING VOLUME SPHERE ", ancillary, 105, 16) + "radius: 12.5\n");
}

TEST(FltRecordBoundingVolumeTest, TheSecondLabelOfTheCylinderIsHeitght)
{
    auto const record = decodeLastAs<FltRecordBoundingVolumeCylinder>(
        withReservedWord(FltWriter().add("BoundingVolumeCylinder", {{"radius", 2}, {"heitght", 0.5}})));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x12345678);
    EXPECT_EQ(record->radius, 2.0);
    EXPECT_EQ(record->heitght, 0.5);
    EXPECT_EQ(dumpOf(*record), frame("\n BOUNDING VOLUME CYLINDER ", ancillary, 106, 24) + "radius: 2\n"
                                                                                           "heitght: 0.5\n");
}

TEST(FltRecordBoundingVolumeTest, TheCenterDecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordBoundingVolumeCenter>(withReservedWord(FltWriter().add(
        "BoundingVolumeCenter",
        {{"XcoordinateCenter", 1.5}, {"YcoordinateCenter", -2.5}, {"ZcoordinateCenter", 3.5}})));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x12345678);
    EXPECT_EQ(record->XcoordinateCenter, 1.5);
    EXPECT_EQ(record->YcoordinateCenter, -2.5);
    EXPECT_EQ(record->ZcoordinateCenter, 3.5);
    EXPECT_EQ(dumpOf(*record), frame("\n BOUNDING VOLUME CENTER ", ancillary, 108, 32) +
                                   "XcoordinateCenter: 1.5\n"
                                   "YcoordinateCenter: -2.5\n"
                                   "ZcoordinateCenter: 3.5\n");
}

TEST(FltRecordBoundingVolumeTest, TheOrientationDecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordBoundingVolumeOrientation>(withReservedWord(FltWriter().add(
        "BoundingVolumeOrientation", {{"yawAngle", 90}, {"pitchAngle", -45.5}, {"rollAngle", 180}})));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x12345678);
    EXPECT_EQ(record->yawAngle, 90.0);
    EXPECT_EQ(record->pitchAngle, -45.5);
    EXPECT_EQ(record->rollAngle, 180.0);
    EXPECT_EQ(dumpOf(*record), frame("\n BOUNDING VOLUME ORIENTATION ", ancillary, 109, 32) +
                                   "yawAngle: 90\n"
                                   "pitchAngle: -45.5\n"
                                   "rollAngle: 180\n");
}

TEST(FltRecordBoundingVolumeTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(FltWriter().add("OldBoundingBox", corners));
    expectShortRecordsToReadOn(FltWriter().add("BoundingBox", corners));
    expectShortRecordsToReadOn(FltWriter().add("BoundingVolumeSphere", {{"radius", 1.0 / 3}}));
    expectShortRecordsToReadOn(
        FltWriter().add("BoundingVolumeCylinder", {{"radius", 1.0 / 3}, {"heitght", 2.0 / 3}}));
    expectShortRecordsToReadOn(FltWriter().add(
        "BoundingVolumeCenter",
        {{"XcoordinateCenter", 1.0 / 3}, {"YcoordinateCenter", -2.5}, {"ZcoordinateCenter", 3.1}}));
    expectShortRecordsToReadOn(FltWriter().add(
        "BoundingVolumeOrientation", {{"yawAngle", 1.0 / 3}, {"pitchAngle", -45.5}, {"rollAngle", 3.1}}));
}

TEST(FltRecordBoundingVolumeTest, AnOldBoxOfLength8BeforeALevelTakesItsCornersFromTheLevel)
{
    std::string const level = FltWriter().push().lastRecord() + FltWriter().pop().lastRecord();
    EXPECT_EQ(linesOf(FltWriter().add("OldBoundingBox", corners).resizeLast(8).addBytes(level)),
              "XcoordinateLowestCorner: -1\n"
              "YcoordinateLowestCorner: 655364\n"
              "ZcoordinateLowestCorner: 720900\n"
              "XcoordinateHighestCorner: 0\n"
              "YcoordinateHighestCorner: 0\n"
              "ZcoordinateHighestCorner: 0\n");
}

} // namespace
