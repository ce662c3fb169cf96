#include "parser/FltRecordIndex.h"

#include "records/FltOpcode.h"
#include "records/FltRecordGroupAndObject.h"
#include "support/MemoryInput.h"
#include "writer/EveryRecord.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace
{

FltWriter twoGroups(int revision = 1570)
{
    FltWriter flt(revision);
    flt.push()
        .add("Group", {{"idASCII", "g1"}})
        .add("Group", {{"idASCII", "g2"}, {"relativePriority", 7}})
        .pop();
    return flt;
}

TEST(FltRecordIndexTest, TellsWhereEachRecordStands)
{
    MemoryInput input(twoGroups().bytes());
    FltRecordIndex const index(input);

    ASSERT_EQ(5u, index.size());
    EXPECT_EQ(FltOpcode::header, index[0].opcode);
    EXPECT_EQ(FltOpcode::group, index[3].opcode);
    std::size_t offset = 0;
    for (std::size_t i = 0; i < index.size(); ++i) {
        EXPECT_EQ(offset, index[i].offset);
        EXPECT_EQ(input.getBuffer() + offset, index.bytes(i));
        offset += index[i].length;
    }
    EXPECT_EQ(static_cast<std::size_t>(input.getSize()), offset);
}

TEST(FltRecordIndexTest, GivesAllFieldsOfARecord)
{
    MemoryInput input(twoGroups().bytes());
    FltRecordIndex const index(input);

    nlohmann::ordered_json const group = index.json(3);
    EXPECT_EQ("FltRecordGroup", group["class"]);
    EXPECT_EQ(index[3].offset, group["offset"]);
    EXPECT_EQ("g2", group["fields"]["idASCII"]);
    EXPECT_EQ(7, group["fields"]["relativePriority"]);
}

TEST(FltRecordIndexTest, ReadsRecordsInTheLayoutOfTheirRevision)
{
    auto const fieldsAt = [](int revision) {
        FltWriter flt(revision);
        flt.add("ColorPalette");
        MemoryInput input(flt.bytes());
        return FltRecordIndex(input).json(1)["fields"];
    };
    EXPECT_FALSE(fieldsAt(13).contains("reserved"));
    EXPECT_TRUE(fieldsAt(1570).contains("reserved"));
}

TEST(FltRecordIndexTest, ReadsEveryRecordInAnyOrder)
{
    MemoryInput input(everyRecord(1570).bytes());
    FltRecordIndex const index(input);
    for (std::size_t i = index.size(); i-- > 0;) {
        // The class of one transformation reads another one, too.
        bool const isPut = index[i].opcode == FltOpcode::putTransform;
        int const opcode = isPut ? int(FltOpcode::rotateAboutEdge) : index[i].opcode;
        EXPECT_EQ(opcode, index.json(i)["opcode"].get<int>()) << i;
    }
}

TEST(FltRecordIndexTest, EndsWhereTheFramingBreaks)
{
    FltWriter flt = twoGroups();
    flt.addBytes(std::string("\0\2\xff\xff", 4));
    MemoryInput input(flt.bytes());
    EXPECT_EQ(5u, FltRecordIndex(input).size());
}

TEST(FltRecordIndexTest, HoldsNothingOfBytesThatAreNoDatabase)
{
    for (std::string const& bytes : {std::string(), std::string("\0\2\0\4", 4), std::string(100, 'x')}) {
        MemoryInput input(bytes);
        EXPECT_EQ(0u, FltRecordIndex(input).size());
    }
}

TEST(FltRecordIndexTest, ReadsShortRecordsAsTheParserDoes)
{
    FltWriter flt = twoGroups();
    flt.resizeLast(4).add("DOF", {{"idASCII", "d"}}).resizeLast(9);
    MemoryInput input(flt.bytes());
    FltRecordIndex const index(input);
    EXPECT_EQ(9, index.json(5)["length"]);
}

} // namespace
