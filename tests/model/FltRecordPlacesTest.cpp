#include "model/FltRecordPlaces.h"

#include "model/FltModelRecordReader.h"
#include "records/FltOpcode.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

TEST(FltRecordPlaces, giveTheRecordsThatWereAdded)
{
    FltWriter flt;
    flt.add("Group", {{"idASCII", "g"}}).add("Comment");
    flt.addRaw(FltOpcode::continuation, "more").add("Matrix");
    std::string const bytes = flt.bytes();
    FltModelRecordReader reader(bytes.data(), bytes.size(), true);
    FltRecordPlaces places;
    std::vector<FltRecordView> records;
    for (FltRecordView record; reader.next(record);) {
        places.add(record);
        records.push_back(record);
    }
    ASSERT_EQ(places.size(), 4U); // the comment and its continuation are one
    EXPECT_TRUE(records[2].isApart);
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(places[i].data, records[i].data) << i;
        EXPECT_EQ(places[i].size, records[i].size) << i;
        EXPECT_EQ(places[i].opcode, records[i].opcode) << i;
        EXPECT_EQ(places[i].offset, records[i].offset) << i;
        EXPECT_EQ(places[i].isApart, records[i].isApart) << i;
        EXPECT_EQ(places.opcodeOf(i), static_cast<int>(records[i].opcode)) << i;
    }
}
