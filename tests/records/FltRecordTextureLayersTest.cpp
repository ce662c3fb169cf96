#include "records/FltRecordTextureLayers.h"

#include "records/FltFields.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

template <class Layout>
void decode(Layout& layout, std::string body)
{
    FltFields::decodeFrom(layout, body.data());
}

TEST(FltRecordTextureLayers, haveLayerOneAtTheHighestBit)
{
    FltRecordTextureLayers layers;
    decode(layers, FltWriter::big32(0x82000000L) + FltWriter::big16(11) + FltWriter::big16(12) +
                       FltWriter::big16(13) + FltWriter::big16(14) + FltWriter::big16(71) +
                       FltWriter::big16(72) + FltWriter::big16(73) + FltWriter::big16(74));
    for (int number = 1; number <= 7; ++number)
        EXPECT_EQ(layers.hasLayer(number), number == 1 || number == 7) << number;
    EXPECT_EQ(layers.layer(1).texture, 11);
    EXPECT_EQ(layers.layer(1).effect, 12);
    EXPECT_EQ(layers.layer(1).mapping, 13);
    EXPECT_EQ(layers.layer(1).data, 14);
    EXPECT_EQ(layers.layer(2).texture, 0);
    EXPECT_EQ(layers.layer(7).texture, 71);
    EXPECT_EQ(FltFields::sizeOf(layers), 20U);
}

TEST(FltRecordLayerUVs, holdTwoFloatsForEachLayerOfAVertex)
{
    FltRecordLayerUVs list;
    decode(list, FltWriter::big32(0xC0000000L));
    FltRecordLayerUVs::Entry entry(list, false);
    EXPECT_EQ(FltFields::sizeOf(entry), 16U);
    decode(entry,
           FltWriter::bigFloat(1) + FltWriter::bigFloat(2) + FltWriter::bigFloat(3) + FltWriter::bigFloat(4));
    EXPECT_EQ(entry.to[0][0], 1);
    EXPECT_EQ(entry.to[0][1], 2);
    EXPECT_EQ(entry.to[1][0], 3);
    EXPECT_EQ(entry.to[1][1], 4);
}

TEST(FltRecordLayerUVs, holdTwiceAsManyForAVertexThatChangesItsPlace)
{
    FltRecordLayerUVs list;
    list.attributeMask = 0x40000000;
    FltRecordLayerUVs::Entry entry(list, true);
    EXPECT_EQ(FltFields::sizeOf(entry), 16U);
    decode(entry,
           FltWriter::bigFloat(1) + FltWriter::bigFloat(2) + FltWriter::bigFloat(3) + FltWriter::bigFloat(4));
    EXPECT_EQ(entry.from[1][0], 1);
    EXPECT_EQ(entry.from[1][1], 2);
    EXPECT_EQ(entry.to[1][0], 3);
    EXPECT_EQ(entry.to[1][1], 4);
    EXPECT_EQ(entry.to[0][0], 0);
}

} // namespace
