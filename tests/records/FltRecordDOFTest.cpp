#include "records/FltRecordDOF.h"

#include "support/FlagLines.h"
#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

FltWriter dof()
{
    return FltWriter().add("DOF", {{"idASCII", "dof1"},
                                   {"XOriginOfDOFLocalCoordinateSystem", 1.5},
                                   {"YOriginOfDOFLocalCoordinateSystem", 2.5},
                                   {"ZOriginOfDOFLocalCoordinateSystem", 3.5},
                                   {"XPointOnXAxisOfDOFLocalCoordinateSystem", 4.5},
                                   {"YPointOnXAxisOfDOFLocalCoordinateSystem", 5.5},
                                   {"ZPointOnXAxisOfDOFLocalCoordinateSystem", 6.5},
                                   {"XPointInXYPlaneOfDOFLocalCoordinateSystem", 7.5},
                                   {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 8.5},
                                   {"ZPointInXYPlaneOfDOFLocalCoordinateSystem", 9.5},
                                   {"ZMinValue", 10.5},
                                   {"ZMaxValue", 11.5},
                                   {"ZCurrentValue", 12.5},
                                   {"ZIncrement", 13.5},
                                   {"YMinValue", 14.5},
                                   {"YMaxValue", 15.5},
                                   {"YCurrentValue", 16.5},
                                   {"YIncrement", 17.5},
                                   {"XMinValue", 18.5},
                                   {"XMaxValue", 19.5},
                                   {"XCurrentValue", 20.5},
                                   {"XIncrement", 21.5},
                                   {"minimumPitch", 22.5},
                                   {"maxPitch", 23.5},
                                   {"currentPitch", 24.5},
                                   {"incrementInPitch", 25.5},
                                   {"minimumRoll", 26.5},
                                   {"maxRoll", 27.5},
                                   {"currentRoll", 28.5},
                                   {"incrementInRoll", 29.5},
                                   {"minimumYaw", 30.5},
                                   {"maxYaw", 31.5},
                                   {"currentYaw", 32.5},
                                   {"incrementInYaw", 33.5},
                                   {"ZMinScale", 34.5},
                                   {"ZMaxScale", 35.5},
                                   {"ZCurrentScale", 36.5},
                                   {"ZIncrementForScale", 37.5},
                                   {"YMinScale", 38.5},
                                   {"YMaxScale", 39.5},
                                   {"YCurrentScale", 40.5},
                                   {"YIncrementForScale", 41.5},
                                   {"XMinScale", 42.5},
                                   {"XMaxScale", 43.5},
                                   {"XCurrentScale", 44.5},
                                   {"XIncrementForScale", 45.5},
                                   {"flags", 0x80800000U}});
}

TEST(FltRecordDOFTest, DecodesEveryField)
{
    auto const record = decodeLastAs<FltRecordDOF>(dof());
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "dof1");
    EXPECT_EQ(record->XOriginOfDOFLocalCoordinateSystem, 1.5);
    EXPECT_EQ(record->YOriginOfDOFLocalCoordinateSystem, 2.5);
    EXPECT_EQ(record->ZOriginOfDOFLocalCoordinateSystem, 3.5);
    EXPECT_EQ(record->XPointOnXAxisOfDOFLocalCoordinateSystem, 4.5);
    EXPECT_EQ(record->YPointOnXAxisOfDOFLocalCoordinateSystem, 5.5);
    EXPECT_EQ(record->ZPointOnXAxisOfDOFLocalCoordinateSystem, 6.5);
    EXPECT_EQ(record->XPointInXYPlaneOfDOFLocalCoordinateSystem, 7.5);
    EXPECT_EQ(record->YPointInXYPlaneOfDOFLocalCoordinateSystem, 8.5);
    EXPECT_EQ(record->ZPointInXYPlaneOfDOFLocalCoordinateSystem, 9.5);
    EXPECT_EQ(record->ZMinValue, 10.5);
    EXPECT_EQ(record->ZMaxValue, 11.5);
    EXPECT_EQ(record->ZCurrentValue, 12.5);
    EXPECT_EQ(record->ZIncrement, 13.5);
    EXPECT_EQ(record->YMinValue, 14.5);
    EXPECT_EQ(record->YMaxValue, 15.5);
    EXPECT_EQ(record->YCurrentValue, 16.5);
    EXPECT_EQ(record->YIncrement, 17.5);
    EXPECT_EQ(record->XMinValue, 18.5);
    EXPECT_EQ(record->XMaxValue, 19.5);
    EXPECT_EQ(record->XCurrentValue, 20.5);
    EXPECT_EQ(record->XIncrement, 21.5);
    EXPECT_EQ(record->minimumPitch, 22.5);
    EXPECT_EQ(record->maxPitch, 23.5);
    EXPECT_EQ(record->currentPitch, 24.5);
    EXPECT_EQ(record->incrementInPitch, 25.5);
    EXPECT_EQ(record->minimumRoll, 26.5);
    EXPECT_EQ(record->maxRoll, 27.5);
    EXPECT_EQ(record->currentRoll, 28.5);
    EXPECT_EQ(record->incrementInRoll, 29.5);
    EXPECT_EQ(record->minimumYaw, 30.5);
    EXPECT_EQ(record->maxYaw, 31.5);
    EXPECT_EQ(record->currentYaw, 32.5);
    EXPECT_EQ(record->incrementInYaw, 33.5);
    EXPECT_EQ(record->ZMinScale, 34.5);
    EXPECT_EQ(record->ZMaxScale, 35.5);
    EXPECT_EQ(record->ZCurrentScale, 36.5);
    EXPECT_EQ(record->ZIncrementForScale, 37.5);
    EXPECT_EQ(record->YMinScale, 38.5);
    EXPECT_EQ(record->YMaxScale, 39.5);
    EXPECT_EQ(record->YCurrentScale, 40.5);
    EXPECT_EQ(record->YIncrementForScale, 41.5);
    EXPECT_EQ(record->XMinScale, 42.5);
    EXPECT_EQ(record->XMaxScale, 43.5);
    EXPECT_EQ(record->XCurrentScale, 44.5);
    EXPECT_EQ(record->XIncrementForScale, 45.5);
    EXPECT_EQ(record->flags, 0x80800000U);
}

TEST(FltRecordDOFTest, DumpsItsFieldsInRunsWithAnEmptyLineBehindEachButTheFlags)
{
    EXPECT_EQ(dumpOf(*decodeLast(dof())), frame("\n DOF RECORD ", "PRIMARY_RECORD", 14, 380) +
                                              "idASCII: dof1\n"
                                              "XOriginOfDOFLocalCoordinateSystem: 1.5\n"
                                              "YOriginOfDOFLocalCoordinateSystem: 2.5\n"
                                              "ZOriginOfDOFLocalCoordinateSystem: 3.5\n"
                                              "XPointOnXAxisOfDOFLocalCoordinateSystem : 4.5\n"
                                              "YPointOnXAxisOfDOFLocalCoordinateSystem: 5.5\n"
                                              "ZPointOnXAxisOfDOFLocalCoordinateSystem : 6.5\n"
                                              "\n"
                                              "XPointInXYPlaneOfDOFLocalCoordinateSystem: 7.5\n"
                                              "YPointInXYPlaneOfDOFLocalCoordinateSystem: 8.5\n"
                                              "ZPointInXYPlaneOfDOFLocalCoordinateSystem : 9.5\n"
                                              "\n"
                                              "ZMinValue: 10.5\n"
                                              "ZMaxValue: 11.5\n"
                                              "ZCurrentValue: 12.5\n"
                                              "ZIncrement: 13.5\n"
                                              "\n"
                                              "YMinValue: 14.5\n"
                                              "YMaxValue: 15.5\n"
                                              "YCurrentValue: 16.5\n"
                                              "YIncrement: 17.5\n"
                                              "\n"
                                              "XMinValue: 18.5\n"
                                              "XMaxValue: 19.5\n"
                                              "XCurrentValue: 20.5\n"
                                              "XIncrement: 21.5\n"
                                              "\n"
                                              "minimumPitch: 22.5\n"
                                              "maxPitch : 23.5\n"
                                              "currentPitch: 24.5\n"
                                              "incrementInPitch: 25.5\n"
                                              "\n"
                                              "minimumRoll: 26.5\n"
                                              "maxRoll : 27.5\n"
                                              "currentRoll: 28.5\n"
                                              "incrementInRoll: 29.5\n"
                                              "\n"
                                              "minimumYaw: 30.5\n"
                                              "maxYaw : 31.5\n"
                                              "currentYaw: 32.5\n"
                                              "incrementInYaw: 33.5\n"
                                              "\n"
                                              "ZMinScale   : 34.5\n"
                                              "ZMaxScale  : 35.5\n"
                                              "ZCurrentScale: 36.5\n"
                                              "ZIncrementForScale: 37.5\n"
                                              "\n"
                                              "YMinScale   : 38.5\n"
                                              "YMaxScale  : 39.5\n"
                                              "YCurrentScale: 40.5\n"
                                              "YIncrementForScale: 41.5\n"
                                              "\n"
                                              "XMinScale : 42.5\n"
                                              "XMaxScale : 43.5\n"
                                              "XCurrentScale: 44.5\n"
                                              "XIncrementForScale    : 45.5\n"
                                              "\n"
                                              "flags: \n"
                                              "     x translation is limited: 1\n"
                                              "     y translation is limited: 0\n"
                                              "     z translation is limited: 0\n"
                                              "     pitch rotation is limited: 0\n"
                                              "     roll rotation is limited: 0\n"
                                              "     yaw rotation is limited: 0\n"
                                              "     x scale is limited: 0\n"
                                              "     y scale is limited: 0\n"
                                              "     z scale is limited: 1\n");
}

TEST(FltRecordDOFTest, EachFlagBitHasItsLine)
{
    expectFlagLines("DOF", "flags", 32,
                    {{31, "     x translation is limited: "},
                     {30, "     y translation is limited: "},
                     {29, "     z translation is limited: "},
                     {28, "     pitch rotation is limited: "},
                     {27, "     roll rotation is limited: "},
                     {26, "     yaw rotation is limited: "},
                     {25, "     x scale is limited: "},
                     {24, "     y scale is limited: "},
                     {23, "     z scale is limited: "}});
}

TEST(FltRecordDOFTest, AnIdOfEightCharactersRunsOnIntoTheReservedWord)
{
    auto const record =
        decodeLastAs<FltRecordDOF>(FltWriter().addRaw(14, "DOFNAME1" + FltWriter::big32(0x4241)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x4241);
    EXPECT_NE(dumpOf(*record).find("\nidASCII: DOFNAME1AB\n"), std::string::npos);
}

TEST(FltRecordDOFTest, TextWithoutAnyZeroEndsWithTheLastMember)
{
    auto const record = decodeLast(FltWriter().addRaw(14, std::string(376, 'x')));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: " + std::string(376, 'x') + "\n"), std::string::npos);
}

} // namespace
