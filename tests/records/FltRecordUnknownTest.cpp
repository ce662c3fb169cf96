#include "records/FltRecordUnknown.h"

#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltRecordUnknownTest, KeepsItsBytesFromTheOpcodeWordOnWithoutTheLastFour)
{
    auto const record = decodeLastAs<FltRecordUnknown>(FltWriter().addRaw(6, "abcdefgh"));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->opcode, 6);
    EXPECT_EQ(record->getLength(), 12U);
    EXPECT_EQ(std::string(record->rawData.get(), 8), std::string("\0\6\0\14abcd", 8));
}

TEST(FltRecordUnknownTest, DumpsItsTitleLinesAloneWithAnEmptyCategory)
{
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().addRaw(6, "abcdefgh"))), "\n UNKNOWN RECORD \n"
                                                                      "  ()\n"
                                                                      "-- Opcode: 6  Length: 12 --\n");
}

TEST(FltRecordUnknownTest, CategoryIsEmptyUntilSomebodySetsIt)
{
    FltRecordUnknown record(115, 4);
    EXPECT_EQ(record.getRecordCategory(), "");
    EXPECT_EQ(record.rawData, nullptr);
    record.setRecordCategory("SOMETHING");
    EXPECT_EQ(record.getRecordCategory(), "SOMETHING");
    EXPECT_EQ(dumpOf(record), frame("\n UNKNOWN RECORD ", "SOMETHING", 115, 4));
}

TEST(FltRecordUnknownTest, RecordOfLengthBelow4KeepsNothing)
{
    for (unsigned length : {1U, 2U, 3U, 4U}) {
        FltWriter flt;
        flt.addRaw(6).claimLength(length);
        auto const record = decodeLastAs<FltRecordUnknown>(flt);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->getLength(), length);
        EXPECT_NE(record->rawData, nullptr);
    }
}

TEST(FltRecordUnknownTest, OpcodeIsThatOfTheFileAsASigned16BitNumber)
{
    for (auto const& [inFile, told] :
         {std::pair(0, 0), {115, 115}, {32767, 32767}, {32768, -32768}, {65535, -1}})
        EXPECT_EQ(decodeLast(FltWriter().addRaw(inFile))->getOpcode(), told);
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().addRaw(65535))), frame("\n UNKNOWN RECORD ", "", -1, 4));
}

} // namespace
