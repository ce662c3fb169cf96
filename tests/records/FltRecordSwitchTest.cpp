#include "records/FltRecordSwitch.h"

#include "messages/FltWarningMessageConsole.h"
#include "support/RecordText.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

namespace
{

FltWriter switchWith(double masks, double words, std::vector<double> const& bits)
{
    return FltWriter().add("Switch", {{"idASCII", "sw1"},
                                      {"indexOfCurrentMask", 1},
                                      {"numberOfMasks", masks},
                                      {"numberOf32BitWordsPerMask", words},
                                      {"masks", bits}});
}

std::string head(unsigned length, std::string const& masks, std::string const& words)
{
    return frame("\n SWITCH RECORD ", "PRIMARY_RECORD", 96, length) +
           "idASCII: sw1\nindexOfCurrentMask: 1\nnumberOfMasks: " + masks +
           "\nnumberOf32BitWordsPerMask: " + words + "\n";
}

/// Decodes with the damage reports of a file of its own. @return what was printed on std::cerr
std::string damageOf(FltWriter const& flt, std::unique_ptr<FltRecordSwitch>& record)
{
    FltWarningMessageConsole::beginFile("switch.flt");
    FltWarningMessageConsole::setPosition(flt.lastOffset(), 96);
    StreamCapture const printed(std::cerr);
    record = decodeLastAs<FltRecordSwitch>(flt);
    return printed.str();
}

TEST(FltRecordSwitchTest, DecodesEveryFieldAndCountsTheWordsOfAllMasksInItsDump)
{
    auto const record =
        decodeLastAs<FltRecordSwitch>(switchWith(2, 2, {0x80000001U, 2, 0xFFFFFFFFU, 0x0F0F0000}));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "sw1");
    EXPECT_EQ(record->indexOfCurrentMask, 1);
    EXPECT_EQ(record->numberOfMasks, 2);
    EXPECT_EQ(record->numberOf32BitWordsPerMask, 2);
    ASSERT_EQ(record->maskWordCount, 4);
    EXPECT_EQ(record->masks[0], INT32_MIN + 1);
    EXPECT_EQ(record->masks[1], 2);
    EXPECT_EQ(record->masks[2], -1);
    EXPECT_EQ(record->masks[3], 0x0F0F0000);
    EXPECT_EQ(dumpOf(*record), head(44, "2", "2") + "Mask number 0: \n"
                                                    "10000000000000000000000000000001\n"
                                                    "Mask number 1: \n"
                                                    "00000000000000000000000000000010\n"
                                                    "Mask number 2: \n"
                                                    "11111111111111111111111111111111\n"
                                                    "Mask number 3: \n"
                                                    "00001111000011110000000000000000\n");
}

TEST(FltRecordSwitchTest, TakesMasksAndWordsEachFromItsOwnPlace)
{
    auto const record = decodeLastAs<FltRecordSwitch>(switchWith(3, 1, {1, 2, 3}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->numberOfMasks, 3);
    EXPECT_EQ(record->numberOf32BitWordsPerMask, 1);
    EXPECT_LT(&record->numberOf32BitWordsPerMask, &record->numberOfMasks);
}

TEST(FltRecordSwitchTest, ZeroMasksOrZeroWordsGiveAnEmptyArrayAndTheHeaderLinesAlone)
{
    auto const noMasks = decodeLastAs<FltRecordSwitch>(switchWith(0, 5, {7}));
    auto const noWords = decodeLastAs<FltRecordSwitch>(switchWith(6, 0, {}));
    ASSERT_NE(noMasks, nullptr);
    ASSERT_NE(noWords, nullptr);
    EXPECT_NE(noMasks->masks, nullptr);
    EXPECT_NE(noWords->masks, nullptr);
    EXPECT_EQ(noMasks->maskWordCount, 0);
    EXPECT_EQ(noWords->maskWordCount, 0);
    EXPECT_EQ(dumpOf(*noMasks), head(32, "0", "5"));
    EXPECT_EQ(dumpOf(*noWords), head(28, "6", "0"));
}

TEST(FltRecordSwitchTest, ANegativeProductThrowsTheExceptionOfTheAllocator)
{
    EXPECT_THROW(decodeLast(switchWith(-1, 1, {})), std::bad_array_new_length);
    EXPECT_THROW(decodeLast(switchWith(65536, 32768, {})), std::bad_array_new_length)
        << "wraps to the lowest number";
}

TEST(FltRecordSwitchTest, TheProductWrapsAroundIn32Bits)
{
    std::unique_ptr<FltRecordSwitch> record;
    EXPECT_EQ(damageOf(switchWith(65536, 65536, {7}), record), "") << "2 to the 32nd wraps to no words";
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maskWordCount, 0);
    EXPECT_EQ(damageOf(switchWith(-2147483648.0, -2147483647.0 - 1, {7}), record), "");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maskWordCount, 0);
    EXPECT_EQ(damageOf(switchWith(-1, -2, {7, 8}), record), "")
        << "two negative counts have a positive product";
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maskWordCount, 2);
}

TEST(FltRecordSwitchTest, ASwitchThatWasNeverDecodedHoldsNothing)
{
    FltRecordSwitch const record(28);
    EXPECT_EQ(record.masks, nullptr);
    EXPECT_EQ(record.maskWordCount, 0);
    EXPECT_EQ(record.numberOfMasks, 0);
}

TEST(FltRecordSwitchTest, WordsThatAreNotThereAreReportedOnceAndTheOthersKept)
{
    std::unique_ptr<FltRecordSwitch> record;
    FltWriter const flt = switchWith(1000000, 2000, {5, 6});
    EXPECT_EQ(damageOf(flt, record),
              "WARNING ! A switch has fewer mask words than its counts say: those that are there are kept "
              "(switch.flt, record with opcode 96 at byte offset " +
                  std::to_string(flt.lastOffset()) + ")\n(Warning Level: 2)\n\n");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->numberOfMasks, 1000000);
    EXPECT_EQ(record->numberOf32BitWordsPerMask, 2000);
    ASSERT_EQ(record->maskWordCount, 2);
    EXPECT_EQ(record->masks[0], 5);
    EXPECT_EQ(record->masks[1], 6);
    EXPECT_EQ(dumpOf(*record), head(36, "1000000", "2000") + "Mask number 0: \n"
                                                             "00000000000000000000000000000101\n"
                                                             "Mask number 1: \n"
                                                             "00000000000000000000000000000110\n");
}

TEST(FltRecordSwitchTest, PartOfAWordIsNoWord)
{
    std::unique_ptr<FltRecordSwitch> record;
    EXPECT_EQ(damageOf(switchWith(1, 2, {5, 6}), record), "");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maskWordCount, 2);
    EXPECT_NE(damageOf(switchWith(1, 2, {5, 6}).resizeLast(35), record), "");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->maskWordCount, 1);
}

TEST(FltRecordSwitchTest, CountsThatStandBehindAShortRecordKeepNoWords)
{
    std::unique_ptr<FltRecordSwitch> record;
    FltWriter const flt =
        switchWith(0, 0, {}).resizeLast(20).addBytes(FltWriter::big32(3) + FltWriter::big32(1));
    EXPECT_NE(damageOf(flt, record), "");
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->numberOfMasks, 3);
    EXPECT_EQ(record->numberOf32BitWordsPerMask, 1);
    EXPECT_EQ(record->maskWordCount, 0);
}

TEST(FltRecordSwitchTest, AnIdOfEightCharactersRunsOnIntoTheReservedWord)
{
    auto const record =
        decodeLastAs<FltRecordSwitch>(FltWriter().addRaw(96, "SWITCH_1" + FltWriter::big32(0x4241)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x4241);
    EXPECT_NE(dumpOf(*record).find("\nidASCII: SWITCH_1AB\nindexOfCurrentMask: 0\n"), std::string::npos);
}

} // namespace
