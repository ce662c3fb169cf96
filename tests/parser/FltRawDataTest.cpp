#include "parser/FltRawData.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

void assign(FltRawData& raw, std::string const& file, std::size_t length, std::size_t reach)
{
    raw.assign(file.data(), file.data() + file.size(), length, reach);
}

TEST(FltRawDataTest, BeginsEmpty)
{
    FltRawData const raw;
    EXPECT_EQ(raw.opcode, 0);
    EXPECT_EQ(raw.length, 0);
    EXPECT_EQ(raw.data, nullptr);
}

TEST(FltRawDataTest, TakesOpcodeLengthAndTheBytesFromTheOpcodeWordOn)
{
    std::string const file("\x80\x02\0\6xyzz", 8);
    FltRawData raw;
    assign(raw, file, 6, 4);
    EXPECT_EQ(raw.opcode, 0x8002);
    EXPECT_EQ(raw.length, 6);
    EXPECT_EQ(std::string(raw.data, 6), file.substr(0, 6));
}

TEST(FltRawDataTest, ReachTakesTheFollowingBytesAndThenZeros)
{
    std::string const file("\0\2\0\4after", 9);
    FltRawData raw;
    assign(raw, file, 4, 12);
    EXPECT_EQ(raw.length, 4);
    EXPECT_EQ(std::string(raw.data, 12), file + std::string(3, '\0'));
}

TEST(FltRawDataTest, BlockIsUsedAgainWithoutLeavingsOfTheRecordBefore)
{
    FltRawData raw;
    assign(raw, std::string("\0\2\0\14", 4) + std::string(8, 'x'), 12, 12);
    char const* const block = raw.data;
    assign(raw, std::string("\0\3\0\4", 4), 4, 10);
    EXPECT_EQ(raw.data, block);
    EXPECT_EQ(raw.opcode, 3);
    EXPECT_EQ(std::string(raw.data, 10), std::string("\0\3\0\4\0\0\0\0\0\0", 10));
}

TEST(FltRawDataTest, LongestRecordIsTakenWhole)
{
    std::string const file = std::string("\0\2\xff\xff", 4) + std::string(65531, 'x');
    FltRawData raw;
    assign(raw, file, 65535, 4);
    EXPECT_EQ(raw.length, 65535);
    EXPECT_EQ(std::string(raw.data, 65535), file);
}

TEST(FltRawDataTest, ARecordThatIsReferredToStaysWhereItIs)
{
    std::string file("\0\2\0\6xyzz", 8);
    FltRawData raw;
    raw.refer(file.data(), file.data() + file.size(), 6, 8);
    EXPECT_EQ(raw.opcode, 2);
    EXPECT_EQ(raw.length, 6);
    EXPECT_EQ(raw.data, file.data());
}

TEST(FltRawDataTest, ARecordWhoseDecoderReadsOnPastTheEndIsCopied)
{
    std::string file("\0\2\0\6xyzz", 8);
    FltRawData raw;
    raw.refer(file.data(), file.data() + file.size(), 6, 9);
    EXPECT_NE(raw.data, file.data());
    EXPECT_EQ(std::string(raw.data, 9), file + '\0');
    raw.refer(file.data() + 2, file.data() + 5, 4, 4);
    EXPECT_EQ(std::string(raw.data, 4), file.substr(2, 3) + '\0')
        << "a record of four bytes, of which three are";
}

TEST(FltRawDataTest, RecordsMayBeReferredToAndCopiedInTurns)
{
    std::string file("\0\2\0\4\0\3\0\4", 8);
    char const* const end = file.data() + file.size();
    FltRawData raw;
    for (int round = 0; round < 3; ++round) {
        raw.refer(file.data(), end, 4, 8);
        EXPECT_EQ(raw.data, file.data());
        raw.refer(file.data() + 4, end, 4, 8);
        EXPECT_EQ(std::string(raw.data, 8), file.substr(4) + std::string(4, '\0'));
        EXPECT_EQ(raw.opcode, 3);
        raw.assign(file.data(), end, 4, 8);
        EXPECT_EQ(std::string(raw.data, 8), file);
    }
    EXPECT_EQ(file, std::string("\0\2\0\4\0\3\0\4", 8));
}

} // namespace
