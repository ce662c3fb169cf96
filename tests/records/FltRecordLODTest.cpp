#include "records/FltRecordLOD.h"

#include "support/FlagLines.h"
#include "support/RecordText.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace
{

std::string const primary = "PRIMARY_RECORD";

TEST(FltRecordLODTest, DecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordLOD>(FltWriter().add("LOD", {{"idASCII", "lod1"},
                                                                           {"switchInDistance", 1500.25},
                                                                           {"switchOutDistance", 0.125},
                                                                           {"id1specialEffect", -1},
                                                                           {"id2specialEffect", 2},
                                                                           {"flags", 0xA0000000U},
                                                                           {"XcenterCoordinate", 3.5},
                                                                           {"YcenterCoordinate", -4.5},
                                                                           {"ZcenterCoordinate", 5e10},
                                                                           {"transitionRange", 6.75}}));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "lod1");
    EXPECT_EQ(record->switchInDistance, 1500.25);
    EXPECT_EQ(record->switchOutDistance, 0.125);
    EXPECT_EQ(record->id1specialEffect, -1);
    EXPECT_EQ(record->id2specialEffect, 2);
    EXPECT_EQ(record->flags, 0xA0000000U);
    EXPECT_EQ(record->XcenterCoordinate, 3.5);
    EXPECT_EQ(record->YcenterCoordinate, -4.5);
    EXPECT_EQ(record->ZcenterCoordinate, 5e10);
    EXPECT_EQ(record->transitionRange, 6.75);
    EXPECT_EQ(dumpOf(*record), frame("\n LEVEL_OF_DETAIL (LOD) RECORD ", primary, 73, 72) +
                                   "idASCII: lod1\n"
                                   "switchInDistance: 1500.25\n"
                                   "switchOutDistance: 0.125\n"
                                   "id1specialEffect: -1\n"
                                   "id2specialEffect: 2\n"
                                   "flags: \n"
                                   "      Use Previous Slant Range: 1\n"
                                   "      FreezeCenter (don't recalculate): 1\n"
                                   "XcenterCoordinate: 3.5\n"
                                   "YcenterCoordinate: -4.5\n"
                                   "ZcenterCoordinate: 5e+10\n"
                                   "transitionRange: 6.75\n");
}

TEST(FltRecordLODTest, FlagBitsHaveTheirLinesAndBit30HasNone)
{
    expectFlagLines(
        "LOD", "flags", 32,
        {{31, "      Use Previous Slant Range: "}, {29, "      FreezeCenter (don't recalculate): "}});
}

TEST(FltRecordLODTest, AnIdOfEightCharactersRunsOnIntoTheReservedWord)
{
    std::string const body = "LODNAME1" + FltWriter::big32(0x00434241);
    auto const record = decodeLastAs<FltRecordLOD>(FltWriter().addRaw(73, body));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x00434241);
    EXPECT_NE(dumpOf(*record).find("\nidASCII: LODNAME1ABC\nswitchInDistance: 0\n"), std::string::npos);
}

TEST(FltRecordOLDLODTest, DecodesAndDumpsEveryFieldWithUnsignedDistancesAndASignedCenter)
{
    auto const record =
        decodeLastAs<FltRecordOLDLOD>(FltWriter(12).add("OLDLOD", {{"idASCII", "lod0"},
                                                                   {"switchInDistance", 4294967295U},
                                                                   {"switchOutDistance", 7},
                                                                   {"id1specialEffect", -1},
                                                                   {"id2specialEffect", 2},
                                                                   {"flags", 0x40000000},
                                                                   {"XcenterCoordinate", -3},
                                                                   {"YcenterCoordinate", 4},
                                                                   {"ZcenterCoordinate", -2147483648.0}}));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "lod0");
    EXPECT_EQ(record->switchInDistance, 4294967295U);
    EXPECT_EQ(record->switchOutDistance, 7U);
    EXPECT_EQ(record->id1specialEffect, -1);
    EXPECT_EQ(record->id2specialEffect, 2);
    EXPECT_EQ(record->flags, 0x40000000U);
    EXPECT_EQ(record->XcenterCoordinate, -3);
    EXPECT_EQ(record->YcenterCoordinate, 4);
    EXPECT_EQ(record->ZcenterCoordinate, INT32_MIN);
    EXPECT_EQ(dumpOf(*record), frame("\n OLD LEVEL_OF_DETAIL (LOD) RECORD (OBSOLETE) ", primary, 3, 40) +
                                   "idASCII: lod0\n"
                                   "switchInDistance: 4294967295\n"
                                   "switchOutDistance: 7\n"
                                   "id1specialEffect: -1\n"
                                   "id2specialEffect: 2\n"
                                   "flags: \n"
                                   "      Use Previous Slant Range: 0\n"
                                   "      SPT Flag: 1\n"
                                   "      FreezeCenter (don't recalculate): 0\n"
                                   "XcenterCoordinate: -3\n"
                                   "YcenterCoordinate: 4\n"
                                   "ZcenterCoordinate: -2147483648\n");
}

TEST(FltRecordOLDLODTest, EachFlagBitHasItsLine)
{
    expectFlagLines("OLDLOD", "flags", 32,
                    {{31, "      Use Previous Slant Range: "},
                     {30, "      SPT Flag: "},
                     {29, "      FreezeCenter (don't recalculate): "}});
}

TEST(FltRecordOLDLODTest, AnIdOfEightCharactersRunsOnIntoTheDistance)
{
    auto const record =
        decodeLast(FltWriter().add("OLDLOD", {{"idASCII", "LODNAME1"}, {"switchInDistance", 0x4241}}));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: LODNAME1AB\nswitchInDistance: 16961\n"), std::string::npos);
}

} // namespace
