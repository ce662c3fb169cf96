#include "model/FltModelRecordReader.h"

#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <iostream>

namespace
{

struct Read {
    explicit Read(std::string const& bytes, bool salvages = true)
        : reader(bytes.data(), bytes.size(), salvages)
    {
        StreamCapture const err(std::cerr);
        for (FltRecordView record; reader.next(record);)
            records.push_back(record);
        messages = err.str();
    }

    FltModelRecordReader reader;
    std::vector<FltRecordView> records;
    std::string messages;
};

} // namespace

TEST(FltModelRecordReader, readsRecordsWithTheirPlaces)
{
    FltWriter flt;
    flt.add("Group").push().pop();
    std::string const bytes = flt.bytes();
    Read const read(bytes);
    ASSERT_EQ(read.records.size(), 4U);
    EXPECT_EQ(read.records[1].opcode, 2U);
    EXPECT_EQ(read.records[1].offset, read.records[0].size);
    EXPECT_EQ(read.reader.getPosition(), bytes.size());
}

TEST(FltModelRecordReader, joinsARecordWithItsContinuations)
{
    FltWriter flt;
    flt.addRaw(85, "abcd").addRaw(23, "efg").addRaw(23, "").addRaw(23, "h").push();
    std::string const bytes = flt.bytes();
    Read const read(bytes);
    ASSERT_EQ(read.records.size(), 3U);
    EXPECT_EQ(read.records[1].size, 12U);
    EXPECT_EQ(read.records[1].textAt(4), "abcdefgh");
    EXPECT_EQ(read.records[2].opcode, 10U);
}

TEST(FltModelRecordReader, joinsAContinuationOfAHeadAloneButNothingShorter)
{
    std::string const whole = FltWriter().addRaw(85, "abcd").addRaw(23, "").bytes();
    ASSERT_EQ(Read(whole).records.size(), 2U);
    EXPECT_TRUE(Read(whole).records[1].isApart);
    std::string const cut = whole.substr(0, whole.size() - 1);
    ASSERT_EQ(Read(cut).records.size(), 2U);
    EXPECT_FALSE(Read(cut).records[1].isApart);
}

TEST(FltModelRecordReader, readsNothingAfterARecordsEnd)
{
    std::string const bytes = FltWriter().addRaw(31, "ab").bytes();
    FltRecordView const record = Read(bytes).records[1];
    EXPECT_EQ(record.word16At(4), 0x6162);
    EXPECT_EQ(record.word16At(5), 0);
    EXPECT_EQ(record.word32At(4), 0U);
    EXPECT_EQ(record.word32At(~std::size_t(0)), 0U);
    EXPECT_EQ(record.textAt(100), "");
}

TEST(FltModelRecordReader, findsTheNextRunOfRecordsAfterAFault)
{
    FltWriter flt;
    flt.add("Group").addBytes(std::string("\0\x02\0\0junk", 8)).add("Group").push().pop().add("Group");
    std::string const bytes = flt.bytes();
    EXPECT_EQ(Read(bytes).records.size(), 6U);
    EXPECT_NE(Read(bytes).messages.find("8 bytes on"), std::string::npos);
    EXPECT_EQ(Read(bytes, false).records.size(), 2U);
}

TEST(FltModelRecordReader, takesThreeRecordsOrTheLastTwoForARun)
{
    std::string const fault("\0\x02\0\0", 4), rubbish(9, '\xff');
    auto const foundAfterAFault = [&](FltWriter const& head, std::string const& end) {
        std::string const bytes =
            FltWriter().bytes() + fault + head.bytes().substr(FltWriter().bytes().size()) + end;
        return Read(bytes).records.size() - 1;
    };
    EXPECT_EQ(foundAfterAFault(FltWriter().add("Group").push().pop(), rubbish), 3U);
    EXPECT_EQ(foundAfterAFault(FltWriter().add("Group").push(), rubbish), 0U);
    EXPECT_EQ(foundAfterAFault(FltWriter().add("Group").push(), ""), 2U);
    EXPECT_EQ(foundAfterAFault(FltWriter().add("Group"), ""), 0U);
    std::string const cutGroup = FltWriter().add("Group").lastRecord().substr(0, 30);
    EXPECT_EQ(foundAfterAFault(FltWriter().push().pop(), cutGroup), 0U) << "the third one isn't whole";
}

TEST(FltModelRecordReader, endsWhereNoRunOfRecordsFollows)
{
    std::string const bytes = FltWriter().bytes() + std::string(1000, '\xff');
    EXPECT_EQ(Read(bytes).records.size(), 1U);
    std::string const cut = FltWriter().add("Group").bytes();
    for (std::size_t size = 0; size < cut.size(); ++size)
        EXPECT_LE(Read(cut.substr(0, size)).records.size(), 1U);
}

TEST(FltModelRecordReader, passesOverRecordsShorterThanTheirHead)
{
    FltWriter flt;
    flt.addBytes(std::string("\0\x02\0\x02", 4)).push();
    std::string const bytes = flt.bytes();
    Read const read(bytes);
    EXPECT_NE(read.messages.find("shorter than its own first four bytes"), std::string::npos);
}
