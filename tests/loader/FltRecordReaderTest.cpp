#include "loader/FltRecordReader.h"

#include "records/FltJsonText.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <cstring>
#include <gtest/gtest.h>
#include <iostream>
#include <nlohmann/json.hpp>

TEST(FltRecordReader, ReadsRecordsOneByOneWithoutAWord)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "hangar"}}).pop();
    flt.save(folder / "a.flt");
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    FltRecordReader records(folder / "a.flt");
    std::vector<int> opcodes;
    std::uint64_t end = 0;
    std::string group;
    while (records.next()) {
        opcodes.push_back(records.opcode());
        EXPECT_EQ(records.offset(), end);
        end += records.length();
        auto const json = nlohmann::json::parse(records.json());
        EXPECT_EQ(json["opcode"], records.opcode());
        EXPECT_EQ(json["offset"], records.offset());
        if (records.opcode() == 2)
            group = json["fields"]["idASCII"];
    }
    EXPECT_EQ(opcodes, (std::vector<int>{1, 10, 2, 11}));
    EXPECT_EQ(end, flt.bytes().size());
    EXPECT_EQ(group, "hangar");
    EXPECT_EQ(records.fault(), "");
    EXPECT_FALSE(records.next());
    EXPECT_EQ(out.str() + err.str(), "");
}

TEST(FltRecordReader, AppendsTheJsonOfARecordToATextOfMany)
{
    ScratchFolder const folder;
    FltWriter().add("Group", {{"idASCII", "hangar"}}).add("Switch").save(folder / "a.flt");
    FltRecordReader records(folder / "a.flt");
    std::string one;
    std::string all = "before ";
    std::string expected = all;
    while (records.next()) {
        records.addJson(all);
        expected += records.json();
    }
    EXPECT_EQ(all, expected);
}

TEST(FltRecordReader, GivesTheFieldsOfARecordThatCanBeRead)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Group", {{"idASCII", "hangar"}});
    flt.add("Switch", {{"numberOfMasks", -5}, {"numberOf32BitWordsPerMask", 1}}).save(folder / "a.flt");
    FltRecordReader records(folder / "a.flt");
    auto const fields = [&records] {
        FltJsonText json;
        json.beginObject();
        records.giveFields(json);
        json.endObject();
        return nlohmann::json::parse(json.written());
    };
    ASSERT_TRUE(records.next() && records.next());
    EXPECT_TRUE(records.isReadable());
    EXPECT_EQ(fields(), nlohmann::json::parse(records.json())["fields"]);
    ASSERT_TRUE(records.next());
    EXPECT_FALSE(records.isReadable());
    EXPECT_EQ(fields(), nlohmann::json::object());
}

TEST(FltRecordReader, GathersColumnsOfTheRecordsOfAnOpcodeThatFollow)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Group").add("Switch", {{"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 1}});
    flt.add("Object");
    std::uint64_t const first = flt.bytes().size();
    flt.add("Switch", {{"indexOfCurrentMask", 3}}).add("Group");
    flt.add("Switch", {{"indexOfCurrentMask", 4}}).save(folder / "a.flt");
    std::vector<FltColumn> const columns = FltRecordReader(folder / "a.flt").columns(96);
    ASSERT_FALSE(columns.empty());
    EXPECT_EQ(columns.front().name, "offset");
    std::int64_t offsets[2] = {};
    ASSERT_EQ(columns.front().values.size(), sizeof offsets);
    std::memcpy(offsets, columns.front().values.data(), sizeof offsets);
    EXPECT_EQ(offsets[0], static_cast<std::int64_t>(first));
    EXPECT_GT(offsets[1], offsets[0]);
    EXPECT_TRUE(FltRecordReader(folder / "a.flt").columns(9999).empty());
}

TEST(FltRecordReader, GoesOnAfterARecordThatCannotBeReadAndSaysWhereTheFileBreaksOff)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Switch", {{"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 1}}).add("Group").addBytes("abc");
    flt.save(folder / "a.flt");
    FltRecordReader records(folder / "a.flt");
    ASSERT_TRUE(records.next());
    ASSERT_TRUE(records.next());
    EXPECT_TRUE(nlohmann::json::parse(records.json()).contains("error"));
    ASSERT_TRUE(records.next());
    EXPECT_EQ(records.opcode(), 2);
    EXPECT_FALSE(records.next());
    EXPECT_NE(records.fault(), "");
}

TEST(FltRecordReader, RefusesWhatIsNoDatabase)
{
    ScratchFolder const folder;
    EXPECT_THROW(FltRecordReader(folder / "none.flt"), FltLoadError);
    EXPECT_THROW(FltRecordReader(folder.write("a.flt", "nothing of the kind")), FltLoadError);
}

TEST(FltRecordReader, GoesToAnyRecordOfTheFile)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "hangar"}});
    std::size_t const group = flt.lastOffset();
    flt.add("LongID", {{"idASCII", "the hangar"}}).pop().save(folder / "a.flt");
    FltRecordReader records(folder / "a.flt");
    while (records.next())
        ;
    for (int i = 0; i < 2; ++i) {
        records.goTo(group);
        ASSERT_TRUE(records.next());
        EXPECT_EQ(records.offset(), group);
        EXPECT_EQ(nlohmann::json::parse(records.json())["fields"]["idASCII"], "hangar");
        EXPECT_FALSE(records.isAncillary());
        ASSERT_TRUE(records.next());
        EXPECT_TRUE(records.isAncillary());
        EXPECT_EQ(nlohmann::json::parse(records.json())["fields"]["idASCII"], "the hangar");
    }
    records.goTo(0);
    ASSERT_TRUE(records.next());
    EXPECT_EQ(records.opcode(), 1);
}

TEST(FltRecordReader, FindsNoRecordWhereTheFileHasEnded)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Group").save(folder / "a.flt");
    std::size_t const size = flt.bytes().size();
    FltRecordReader records(folder / "a.flt");
    for (std::uint64_t const offset : {std::uint64_t(size), std::uint64_t(size + 1), ~std::uint64_t(0)}) {
        records.goTo(offset);
        EXPECT_FALSE(records.next());
        EXPECT_EQ(records.fault(), "");
    }
    for (std::uint64_t offset = 0; offset < size; ++offset) { // no byte makes it read outside of the file
        records.goTo(offset);
        while (records.next())
            EXPECT_LE(records.offset() + records.length(), size);
    }
}
