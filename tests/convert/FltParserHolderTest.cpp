#include "convert/FltParserHolder.h"

#include "records/FltRecordControl.h"
#include "support/MemoryInput.h"

#include <gtest/gtest.h>
#include <memory>
#include <utility>

namespace
{

/// A record that counts itself for as long as it is alive, which may be longer than a test lasts.
class CountedRecord : public FltRecordPushLevel
{
public:
    explicit CountedRecord(std::shared_ptr<int> alive) : FltRecordPushLevel(4), alive(std::move(alive))
    {
        ++*this->alive;
    }
    ~CountedRecord() override { --*alive; }

    CountedRecord(CountedRecord const&) = delete;
    CountedRecord& operator=(CountedRecord const&) = delete;

private:
    std::shared_ptr<int> alive;
};

class FltParserHolderTest : public testing::Test
{
protected:
    void addRecords(FltParser& parser, int count)
    {
        for (int i = 0; i < count; ++i)
            parser.getFltRecords().push_back(new CountedRecord(alive));
    }

    /// What a failed conversion leaves behind takes the place of what the one before left.
    void abandon(int records)
    {
        FltParserHolder other;
        other.make(&input);
        addRecords(*other.get(), records);
    }

    std::shared_ptr<int> alive = std::make_shared<int>(0);
    MemoryInput input{""};
    FltParserHolder holder;
};

TEST_F(FltParserHolderTest, HasNoParserAtFirst)
{
    EXPECT_EQ(holder.get(), nullptr);
    EXPECT_FALSE(holder.holdsRecords());
    holder.destroyRecords();
    holder.retire();
    EXPECT_EQ(holder.get(), nullptr);
}

TEST_F(FltParserHolderTest, MakesAParserForAnInputThatStaysTheCallers)
{
    holder.make(&input);
    ASSERT_NE(holder.get(), nullptr);
    EXPECT_EQ(holder.get()->getInput(), &input);
    EXPECT_TRUE(holder.holdsRecords());
}

TEST_F(FltParserHolderTest, DestroysEachRecordOnceEvenIfItStandsTwice)
{
    holder.make(&input);
    addRecords(*holder.get(), 3);
    auto& records = holder.get()->getFltRecords();
    records.push_back(records.back());
    holder.destroyRecords();
    EXPECT_EQ(*alive, 0);
    EXPECT_EQ(records.size(), 4U);
    EXPECT_FALSE(holder.holdsRecords());
    holder.destroyRecords();
    EXPECT_EQ(*alive, 0);
}

TEST_F(FltParserHolderTest, ARetiredParserLivesOnAndTheNextOneHasRecordsAgain)
{
    holder.make(&input);
    FltParser* const first = holder.get();
    holder.destroyRecords();
    holder.retire();
    EXPECT_EQ(holder.get(), nullptr);
    EXPECT_EQ(first->getInput(), &input);
    holder.make(&input);
    EXPECT_NE(holder.get(), first);
    EXPECT_TRUE(holder.holdsRecords());
}

TEST_F(FltParserHolderTest, OfFailedConversionsOnlyTheLastRecordsStayAlive)
{
    abandon(3);
    EXPECT_EQ(*alive, 3);
    abandon(2);
    EXPECT_EQ(*alive, 2);
    abandon(0); // there is nothing to take their place
    EXPECT_EQ(*alive, 2);
    abandon(1);
    EXPECT_EQ(*alive, 1);
}

TEST_F(FltParserHolderTest, ACallersParserStaysTheCallersWithItsRecords)
{
    FltParser parser(&input);
    addRecords(parser, 2);
    {
        FltParserHolder other;
        other.take(&parser);
        EXPECT_EQ(other.get(), &parser);
        other.retire(); // it isn't its own
        EXPECT_EQ(other.get(), &parser);
    }
    EXPECT_EQ(*alive, 2);
    EXPECT_EQ(parser.getInput(), &input);
    destroyRecords(parser);
    parser.setInput(nullptr);
}

TEST_F(FltParserHolderTest, ACallersParserInThePlaceOfItsOwnIsNotTakenForIt)
{
    FltParser parser(&input);
    addRecords(parser, 2);
    {
        FltParserHolder other;
        other.make(&input);
        addRecords(*other.get(), 5);
        other.take(&parser);
        EXPECT_TRUE(other.holdsRecords());
        other.retire();
        EXPECT_EQ(other.get(), nullptr);
    }
    EXPECT_EQ(parser.getInput(), &input);
    destroyRecords(parser);
    parser.setInput(nullptr);
    EXPECT_EQ(*alive, 5); // of the parser of its own, like those of a failed conversion
}

} // namespace
