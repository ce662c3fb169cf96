#include "records/FltVertexListEntry.h"

#include "records/FltFields.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

TEST(FltVertexListEntry, isOneOffset)
{
    FltVertexListEntry entry;
    std::string body = FltWriter::big32(-40);
    FltFields::decodeFrom(entry, body.data());
    EXPECT_EQ(entry.offset, -40);
    EXPECT_EQ(FltFields::sizeOf(entry), 4U);
}

TEST(FltMorphVertexListEntry, endsAtTheSecondOfTwoOffsets)
{
    FltMorphVertexListEntry entry;
    std::string body = FltWriter::big32(8) + FltWriter::big32(48);
    FltFields::decodeFrom(entry, body.data());
    EXPECT_EQ(entry.from, 8);
    EXPECT_EQ(entry.offset, 48);
    EXPECT_EQ(FltFields::sizeOf(entry), 8U);
}

} // namespace
