#include "records/FltRecordGroupAndObject.h"

#include "support/FlagLines.h"
#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

std::string const primary = "PRIMARY_RECORD";

FltWriter groupOfRevision(int revision)
{
    return FltWriter(revision).add("Group", {{"idASCII", "g1"},
                                             {"relativePriority", -2},
                                             {"flags", 0x52000000},
                                             {"id1SpecialEffect", 3},
                                             {"id2SpecialEffect", -4},
                                             {"significance", 5},
                                             {"layerCode", -6}});
}

std::string const groupLines = "idASCII: g1\n"
                               "relativePriority: -2\n"
                               "flags: \n"
                               "     forward animation: 1\n"
                               "     swing animation: 0\n"
                               "     bounding box follows: 1\n"
                               "     freeze bounding box: 0\n"
                               "     default parent: 0\n"
                               "     backward animation: 1\n"
                               "id1SpecialEffect: 3\n"
                               "id2SpecialEffect: -4\n"
                               "significance: 5\n"
                               "layerCode: -6\n";

TEST(FltRecordGroupTest, DecodesEveryField)
{
    auto const record = decodeLastAs<FltRecordGroup>(groupOfRevision(1570));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->revision, 1570);
    EXPECT_STREQ(record->idASCII, "g1");
    EXPECT_EQ(record->relativePriority, -2);
    EXPECT_EQ(record->flags, 0x52000000U);
    EXPECT_EQ(record->id1SpecialEffect, 3);
    EXPECT_EQ(record->id2SpecialEffect, -4);
    EXPECT_EQ(record->significance, 5);
    EXPECT_EQ(record->layerCode, -6);
}

TEST(FltRecordGroupTest, DumpsItsLinesAtEitherSideOfRevision1421)
{
    EXPECT_EQ(dumpOf(*decodeLast(groupOfRevision(1420))),
              frame("\n GROUP RECORD ", primary, 2, 28) + groupLines);
    EXPECT_EQ(dumpOf(*decodeLast(groupOfRevision(1421))),
              frame("\n GROUP RECORD ", primary, 2, 32) + groupLines);
}

TEST(FltRecordGroupTest, ReadsItsLastWordFromRevision1421OnWithNoChangeInTheDump)
{
    std::string const body = "numbered" + FltWriter::big16(1) + FltWriter::big16(22) + FltWriter::big32(0) +
                             FltWriter::big16(3) + FltWriter::big16(4) + FltWriter::big16(5) +
                             std::string("\6\7") + FltWriter::big32(0x01020304);
    auto const before = decodeLastAs<FltRecordGroup>(FltWriter(1420).addRaw(2, body));
    auto const since = decodeLastAs<FltRecordGroup>(FltWriter(1421).addRaw(2, body));
    ASSERT_NE(before, nullptr);
    ASSERT_NE(since, nullptr);
    EXPECT_EQ(before->reserved3, 0);
    EXPECT_EQ(since->reserved3, 0x01020304);
    EXPECT_EQ(since->reserved1, 22);
    EXPECT_EQ(since->layerCode, 6);
    EXPECT_EQ(since->reserved2, 7);
    EXPECT_EQ(dumpOf(*before), dumpOf(*since));
}

TEST(FltRecordGroupTest, EachFlagBitHasItsLine)
{
    expectFlagLines("Group", "flags", 32,
                    {{30, "     forward animation: "},
                     {29, "     swing animation: "},
                     {28, "     bounding box follows: "},
                     {27, "     freeze bounding box: "},
                     {26, "     default parent: "},
                     {25, "     backward animation: "}});
}

TEST(FltRecordGroupTest, AnIdOfEightCharactersRunsOnIntoThePriority)
{
    auto const record =
        decodeLast(FltWriter().add("Group", {{"idASCII", "GROUPNAM"}, {"relativePriority", 0x4241}}));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: GROUPNAMAB\nrelativePriority: 16961\n"), std::string::npos);
}

TEST(FltRecordGroupTest, AnIdWithoutAnEndStopsAtThatOfTheRecord)
{
    FltWriter flt(1580);
    flt.addRaw(2, std::string(28, 'A'));
    auto const record = decodeLastAs<FltRecordGroup>(flt), next = decodeLastAs<FltRecordGroup>(flt);
    auto const* const end = reinterpret_cast<char const*>(record.get() + 1);
    std::string const id(record->idASCII, static_cast<std::size_t>(end - record->idASCII));
    std::string const dump = dumpOf(*record);
    EXPECT_NE(dump.find("\nidASCII: " + id.substr(0, id.find('\0')) + "\nrelativePriority"),
              std::string::npos);
    EXPECT_EQ(dump, dumpOf(*next)) << "what stands behind it in memory";
}

TEST(FltRecordGroupTest, AnIdOfEightCharactersStopsAtAPriorityOfZero)
{
    auto const record = decodeLast(FltWriter().add("Group", {{"idASCII", "GROUPNAM"}}));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: GROUPNAM\nrelativePriority: 0\n"), std::string::npos);
}

TEST(FltRecordObjectTest, DecodesEveryFieldAndDumpsTheFlagsInThirdPlace)
{
    auto const record = decodeLastAs<FltRecordObject>(FltWriter().add("Object", {{"idASCII", "o1"},
                                                                                 {"flags", 0xA4000000U},
                                                                                 {"relativePriority", -7},
                                                                                 {"transparency", 65535},
                                                                                 {"id1SpecialEffect", 8},
                                                                                 {"id2SpecialEffect", 9},
                                                                                 {"significance", -10},
                                                                                 {"spare", -11}}));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "o1");
    EXPECT_EQ(record->flags, 0xA4000000U);
    EXPECT_EQ(record->relativePriority, -7);
    EXPECT_EQ(record->transparency, 65535);
    EXPECT_EQ(record->id1SpecialEffect, 8);
    EXPECT_EQ(record->id2SpecialEffect, 9);
    EXPECT_EQ(record->significance, -10);
    EXPECT_EQ(record->spare, -11);
    EXPECT_EQ(dumpOf(*record), frame("\n OBJECT RECORD ", primary, 4, 28) + "idASCII: o1\n"
                                                                            "relativePriority: -7\n"
                                                                            "transparency: 65535\n"
                                                                            "flags: \n"
                                                                            "don t display in daylight: 1\n"
                                                                            " ---------    at dusk: 0\n"
                                                                            " ---------    at night: 1\n"
                                                                            "don t illuminate: 0\n"
                                                                            "flat shaded: 0\n"
                                                                            "group's shadow object: 1\n"
                                                                            "id1SpecialEffect: 8\n"
                                                                            "id2SpecialEffect: 9\n"
                                                                            "significance: -10\n"
                                                                            "spare: -11\n");
}

TEST(FltRecordObjectTest, EachFlagBitHasItsLine)
{
    expectFlagLines("Object", "flags", 32,
                    {{31, "don t display in daylight: "},
                     {30, " ---------    at dusk: "},
                     {29, " ---------    at night: "},
                     {28, "don t illuminate: "},
                     {27, "flat shaded: "},
                     {26, "group's shadow object: "}});
}

TEST(FltRecordObjectTest, AnIdOfEightCharactersRunsOnIntoTheFlagsAndThePriority)
{
    auto const record = decodeLast(FltWriter().add(
        "Object", {{"idASCII", "OBJECT_1"}, {"flags", 0x44434241}, {"relativePriority", 0x45}}));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: OBJECT_1ABCDE\nrelativePriority: 69\n"), std::string::npos);
}

TEST(FltRecordObjectTest, TextWithoutAnyZeroEndsWithTheLastMember)
{
    auto const record = decodeLast(FltWriter().addRaw(4, std::string(24, 'x')));
    EXPECT_NE(dumpOf(*record).find("\nidASCII: " + std::string(24, 'x') + "\nrelativePriority: "),
              std::string::npos);
}

} // namespace
