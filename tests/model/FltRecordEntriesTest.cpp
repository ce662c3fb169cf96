#include "model/FltRecordEntries.h"

#include "records/FltRecordMesh.h"
#include "records/FltVertexListEntry.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

FltRecordView viewOf(std::string const& bytes)
{
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size()), 0, 0};
}

TEST(FltRecordEntries, standOneAfterTheOtherAfterTheHeads)
{
    std::string const bytes =
        std::string(4, 'x') + FltWriter::big32(1) + FltWriter::big32(2) + FltWriter::big32(3);
    FltRecordView const view = viewOf(bytes);
    FltVertexListEntry entry;
    FltRecordEntries const entries(view, entry);
    ASSERT_EQ(entries.countWhole(), 3U);
    entries.decode(2, entry);
    EXPECT_EQ(entry.offset, 3);
    FltRecordEntries const later(view, entry, FltRecordLocalVertexPool());
    ASSERT_EQ(later.countWhole(), 1U);
    later.decode(0, entry);
    EXPECT_EQ(entry.offset, 3);
}

TEST(FltRecordEntries, fillTheLastOneUpWithZeros)
{
    std::string const bytes = std::string(4, 'x') + FltWriter::big32(1) + FltWriter::big32(2) +
                              FltWriter::big32(3) + "\1and what follows the record";
    FltRecordView view = viewOf(bytes);
    view.size = 17;
    FltMorphVertexListEntry entry;
    FltRecordEntries const entries(view, entry);
    EXPECT_EQ(entries.countWhole(), 1U);
    ASSERT_EQ(entries.countBegun(), 2U);
    entries.decode(1, entry);
    EXPECT_EQ(entry.from, 3);
    EXPECT_EQ(entry.offset, 0x01000000);
}

TEST(FltRecordEntries, areNoneInARecordThatIsShorterThanItsHead)
{
    std::string const bytes(10, 'x');
    FltRecordView const view = viewOf(bytes);
    FltRecordEntries const entries(view, FltVertexListEntry(), FltRecordLocalVertexPool());
    EXPECT_EQ(entries.countWhole(), 0U);
    EXPECT_EQ(entries.countBegun(), 0U);
}

TEST(FltRecordEntries, areNoneWhereEntriesTakeNoBytes)
{
    std::string const bytes(40, 'x');
    FltRecordView const view = viewOf(bytes);
    FltRecordEntries const entries(view, FltRecordLocalVertexPool::Vertex());
    EXPECT_EQ(entries.countWhole(), 0U);
    EXPECT_EQ(entries.countBegun(), 0U);
}

} // namespace
