#include "records/FltRecordMultitexture.h"

#include "records/FltRecordUnknown.h"
#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>

namespace
{

std::string const ancillary = "ANCILLARY_RECORD";
std::string const title = "\n MULTI TEXTURE RECORD ";
std::string const uvTitle = "\n UV LIST RECORD ";

using UVList = FltRecordUVList;

std::vector<double> numbersFrom(double first, int count)
{
    std::vector<double> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

/// A UV list record of @p length bytes, whose values run on over the bytes behind it.
std::vector<char> uvBlock(unsigned length, unsigned mask, std::vector<double> const& values)
{
    std::string const bytes = FltWriter()
                                  .add("UVList", {{"attributeMask", mask}, {"values", values}})
                                  .claimLength(length)
                                  .lastRecord();
    std::vector<char> block(bytes.begin(), bytes.end()); // a block of its own size, watched at its end
    block.resize(UVList::reach(length));
    return block;
}

/// The list that the block of a record of @p length bytes is decoded to.
std::unique_ptr<UVList> decode(unsigned length, std::vector<char> block,
                               UVList::VertexType type = UVList::plainVertices)
{
    auto list = std::make_unique<UVList>(length);
    list->setVertexType(type);
    list->getPropertiesFromData(block.data());
    return list;
}

TEST(FltRecordMultitextureTest, Mask5ReadsLayers0And2FromOffsets8And16)
{
    auto const record = decodeLastAs<FltRecordMultitexture>(
        FltWriter().add("Multitexture", {{"attributeMask", 5}, {"layers", {1, 2, 3, 4, 65535, 6, 7, 8}}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->attributeMask, 5);
    EXPECT_EQ(record->layers[0].texture, 1);
    EXPECT_EQ(record->layers[0].effect, 2);
    EXPECT_EQ(record->layers[0].mapping, 3);
    EXPECT_EQ(record->layers[0].data, 4);
    EXPECT_EQ(record->layers[1].texture, 0);
    EXPECT_EQ(record->layers[1].data, 0);
    EXPECT_EQ(record->layers[2].texture, 65535);
    EXPECT_EQ(record->layers[2].effect, 6);
    EXPECT_EQ(record->layers[2].mapping, 7);
    EXPECT_EQ(record->layers[2].data, 8);
    EXPECT_EQ(dumpOf(*record), frame(title, ancillary, 52, 24) + "attributeMask: 0x5\n"
                                                                 "layer[0]: \n"
                                                                 "  texture: 1\n"
                                                                 "   effect: 2\n"
                                                                 "  mapping: 3\n"
                                                                 "     data: 4\n"
                                                                 "layer[2]: \n"
                                                                 "  texture: 65535\n"
                                                                 "   effect: 6\n"
                                                                 "  mapping: 7\n"
                                                                 "     data: 8\n");
}

TEST(FltRecordMultitextureTest, AMaskWithBitsOnlyAbove7ReadsNoLayerAndDumpsOnlyItself)
{
    auto const record = decodeLastAs<FltRecordMultitexture>(
        FltWriter().add("Multitexture", {{"attributeMask", 0x7fffff00}, {"layers", {1, 2, 3, 4}}}));
    ASSERT_NE(record, nullptr);
    for (FltRecordMultitexture::Layer const& layer : record->layers)
        EXPECT_EQ(layer.texture, 0);
    EXPECT_EQ(dumpOf(*record), frame(title, ancillary, 52, 16) + "attributeMask: 0x7fffff00\n");
}

TEST(FltRecordMultitextureTest, AMaskPrintsSignExtendedAndZeroAsTheNullPointer)
{
    EXPECT_EQ(linesOf(FltWriter().add("Multitexture", {{"attributeMask", 0xff000000U}})),
              "attributeMask: 0xffffffffff000000\n");
    EXPECT_EQ(linesOf(FltWriter().add("Multitexture")), "attributeMask: 0\n");
}

TEST(FltRecordMultitextureTest, AllEightLayersAreReadFrom72Bytes)
{
    auto const record = decodeLastAs<FltRecordMultitexture>(
        FltWriter().add("Multitexture", {{"attributeMask", 0xff}, {"layers", numbersFrom(1, 32)}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getLength(), 72U);
    for (int n = 0; n < 8; ++n) {
        EXPECT_EQ(record->layers[n].texture, 4 * n + 1);
        EXPECT_EQ(record->layers[n].data, 4 * n + 4);
    }
}

TEST(FltRecordMultitextureTest, LayersAreCountedFromTheLeastSignificantBitModulo32)
{
    FltRecordMultitexture record(8);
    EXPECT_EQ(record.attributeMask, 0);
    record.attributeMask = std::numeric_limits<std::int32_t>::min() | 2;
    EXPECT_FALSE(record.hasLayerN(0));
    EXPECT_TRUE(record.hasLayerN(1));
    EXPECT_TRUE(record.hasLayerN(31));
    EXPECT_FALSE(record.hasLayerN(32));
    EXPECT_TRUE(record.hasLayerN(33));
    EXPECT_TRUE(record.hasLayerN(-1));
    EXPECT_FALSE(record.hasLayerN(std::numeric_limits<int>::min()));
    EXPECT_TRUE(record.hasLayerN(std::numeric_limits<int>::max()));
}

TEST(FltRecordMultitextureTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(
        FltWriter().add("Multitexture", {{"attributeMask", 0xff}, {"layers", numbersFrom(1000, 32)}}));
}

TEST(FltRecordMultitextureTest, ARecordOfLength8BeforeAPushLevelReadsItAsALayer)
{
    auto const record = decodeLastAs<FltRecordMultitexture>(
        FltWriter().add("Multitexture", {{"attributeMask", 8}}).addBytes(FltWriter().push().lastRecord()));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->layers[3].texture, 10);
    EXPECT_EQ(record->layers[3].effect, 4);
    EXPECT_EQ(record->layers[3].mapping, 0);
    EXPECT_EQ(record->layers[3].data, 0);
}

TEST(FltRecordUVListTest, Opcode53InAFileGivesAnUnknownRecord)
{
    auto const record = decodeLastAs<FltRecordUnknown>(
        FltWriter().add("UVList", {{"attributeMask", 1}, {"values", {0.5, 0.25}}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(dumpOf(*record), frame("\n UNKNOWN RECORD ", "", 53, 24));
}

TEST(FltRecordUVListTest, IsAListOfPlainVerticesWithoutEntriesToBeginWith)
{
    UVList const list(24);
    EXPECT_EQ(list.getOpcode(), 53);
    EXPECT_EQ(list.getRecordCategory(), ancillary);
    EXPECT_EQ(list.getLength(), 24U);
    EXPECT_EQ(list.getVertexType(), UVList::plainVertices);
    EXPECT_EQ(list.attributeMask, 0);
    EXPECT_TRUE(list.setOfUVs.empty());
}

TEST(FltRecordUVListTest, PlainEntriesTake16BytesButAreCountedWith8SoTheyReachTwiceTheBody)
{
    // Two layers in 32 bytes make two vertices, whose entries take 64.
    auto const list = decode(40, uvBlock(40, 0x82, numbersFrom(1, 8)));
    EXPECT_EQ(UVList::reach(40), 72U);
    ASSERT_EQ(list->setOfUVs.size(), 2U);
    ASSERT_EQ(list->setOfUVs[1].size(), 2U);
    UVList::UV const& first = list->setOfUVs[0].at(1);
    EXPECT_EQ(first.uOfFirstSet, 1);
    EXPECT_EQ(first.uOfSecondSet, 1);
    EXPECT_EQ(first.vOfFirstSet, 2);
    EXPECT_EQ(first.vOfSecondSet, 2);
    EXPECT_EQ(list->setOfUVs[0].at(7).uOfFirstSet, 3);
    EXPECT_EQ(list->setOfUVs[1].at(1).vOfFirstSet, 6);
    EXPECT_EQ(list->setOfUVs[1].at(7).uOfSecondSet, 7);
    EXPECT_EQ(list->setOfUVs[1].at(7).vOfSecondSet, 8);
}

TEST(FltRecordUVListTest, MorphEntriesTake32BytesButAreCountedWith16SoTheyReachTwiceTheBody)
{
    auto const list = decode(40, uvBlock(40, 1, numbersFrom(1, 8)), UVList::morphVertices);
    ASSERT_EQ(list->setOfUVs.size(), 2U);
    UVList::UV const& first = list->setOfUVs[0].at(0);
    EXPECT_EQ(first.uOfFirstSet, 1);
    EXPECT_EQ(first.vOfFirstSet, 2);
    EXPECT_EQ(first.uOfSecondSet, 3);
    EXPECT_EQ(first.vOfSecondSet, 4);
    EXPECT_EQ(list->setOfUVs[1].at(0).vOfSecondSet, 8);
}

TEST(FltRecordUVListTest, AVertexTypeThatIsNeitherReadsAsPlainAndGivesNoCoordinates)
{
    auto const list = decode(24, uvBlock(24, 1, numbersFrom(1, 4)), static_cast<UVList::VertexType>(2));
    ASSERT_EQ(list->setOfUVs.size(), 2U);
    EXPECT_EQ(list->setOfUVs[1].at(0).vOfSecondSet, 4);
    double a = -1;
    EXPECT_FALSE(list->getUV(0, 0, a, a));
    EXPECT_FALSE(list->getMorphUV(0, 0, a, a, a, a));
    EXPECT_EQ(a, -1);
}

TEST(FltRecordUVListTest, AListWithoutLayersHasNoEntries)
{
    for (unsigned const mask : {0U, 0xffffff00U})
        for (auto const type : {UVList::plainVertices, UVList::morphVertices}) {
            auto const list = decode(40, uvBlock(40, mask, numbersFrom(1, 8)), type);
            EXPECT_EQ(static_cast<unsigned>(list->attributeMask), mask);
            EXPECT_TRUE(list->setOfUVs.empty());
        }
}

TEST(FltRecordUVListTest, ARecordShorterThan8BytesIsLeftAlone)
{
    for (unsigned length = 0; length < 8; ++length) {
        EXPECT_EQ(UVList::reach(length), length);
        auto const list = decode(length, std::vector<char>(length, '\1'));
        EXPECT_EQ(list->attributeMask, 0);
        EXPECT_TRUE(list->setOfUVs.empty());
    }
}

TEST(FltRecordUVListTest, ARecordOfAnyLengthReadsNoFurtherThanItsReach)
{
    for (unsigned const mask : {0x1U, 0x80U, 0x15U, 0xffU})
        for (auto const type : {UVList::plainVertices, UVList::morphVertices})
            for (unsigned length = 8; length <= 300; ++length) {
                auto const list = decode(length, uvBlock(length, mask, {}), type);
                unsigned const layers = mask == 0xff ? 8 : mask == 0x15 ? 3 : 1;
                unsigned const size = type == UVList::morphVertices ? 16 : 8;
                EXPECT_EQ(list->setOfUVs.size(), (length - 8) / size / layers) << "length " << length;
            }
}

TEST(FltRecordUVListTest, DecodingAgainReplacesTheVerticesThatTheRecordHolds)
{
    UVList list(24);
    std::vector<char> both = uvBlock(24, 2, numbersFrom(1, 4));
    list.getPropertiesFromData(both.data());
    std::vector<char> other = uvBlock(24, 4, numbersFrom(11, 4));
    list.getPropertiesFromData(other.data());
    ASSERT_EQ(list.setOfUVs.size(), 2U);
    EXPECT_EQ(list.setOfUVs[1].count(1), 0U);
    EXPECT_EQ(list.setOfUVs[1].at(2).uOfFirstSet, 13);
}

TEST(FltRecordUVListTest, GetUVGivesTheSecondSetOfAPlainVertex)
{
    auto const list = decode(24, uvBlock(24, 1, {0.5, 0.25, 0.75, 1}));
    double u = -1;
    double v = -1;
    EXPECT_TRUE(list->getUV(1, 0, u, v));
    EXPECT_EQ(u, 0.75);
    EXPECT_EQ(v, 1);
    list->setOfUVs[1][0] = {1, 2, 3, 4};
    EXPECT_TRUE(list->getUV(1, 0, u, v));
    EXPECT_EQ(u, 2);
    EXPECT_EQ(v, 4);
}

TEST(FltRecordUVListTest, GetMorphUVGivesTheFourValuesInTheOrderOfTheFile)
{
    auto const list = decode(40, uvBlock(40, 1, numbersFrom(1, 8)), UVList::morphVertices);
    double first = -1;
    double second = -1;
    double third = -1;
    double fourth = -1;
    EXPECT_TRUE(list->getMorphUV(1, 0, first, second, third, fourth));
    EXPECT_EQ(first, 5);
    EXPECT_EQ(second, 6);
    EXPECT_EQ(third, 7);
    EXPECT_EQ(fourth, 8);
}

TEST(FltRecordUVListTest, GetUVOnAListOfVertexType1AndGetMorphUVOnOneOfType0ReturnFalse)
{
    double u = -1;
    double v = -2;
    auto const morph = decode(24, uvBlock(24, 1, numbersFrom(1, 4)), UVList::morphVertices);
    EXPECT_FALSE(morph->getUV(0, 0, u, v));
    auto const plain = decode(24, uvBlock(24, 1, numbersFrom(1, 4)));
    EXPECT_FALSE(plain->getMorphUV(0, 0, u, v, u, v));
    EXPECT_EQ(u, -1);
    EXPECT_EQ(v, -2);
}

TEST(FltRecordUVListTest, ALayerThatIsNotThereGivesFalseAndLeavesTheValues)
{
    double u = -1;
    double v = -2;
    auto const plain = decode(24, uvBlock(24, 1, numbersFrom(1, 4)));
    EXPECT_FALSE(plain->getUV(0, 1, u, v));
    auto const morph = decode(24, uvBlock(24, 1, numbersFrom(1, 4)), UVList::morphVertices);
    EXPECT_FALSE(morph->getMorphUV(0, 1, u, v, u, v));
    EXPECT_EQ(u, -1);
    EXPECT_EQ(v, -2);
    EXPECT_EQ(plain->setOfUVs[0].size(), 1U);
}

TEST(FltRecordUVListTest, AVertexThatIsNotThereEntersTheListWithZeros)
{
    double u = -1;
    double v = -2;
    auto const list = decode(24, uvBlock(24, 1, numbersFrom(1, 4)));
    EXPECT_TRUE(list->getUV(77, 0, u, v));
    EXPECT_EQ(u, 0);
    EXPECT_EQ(v, 0);
    EXPECT_EQ(list->setOfUVs.count(77), 1U);
    // Numbers of layers go round after 32, the keys of the map don't.
    EXPECT_TRUE(list->getUV(0, 32, u, v));
    EXPECT_EQ(u, 0);
    EXPECT_EQ(list->setOfUVs[0].size(), 2U);
}

TEST(FltRecordUVListTest, DumpsTheNumberOfEachLayerThreeTimesAndNoCoordinates)
{
    auto const list = decode(24, uvBlock(24, 0x80000082U, numbersFrom(1, 4)));
    EXPECT_EQ(dumpOf(*list), frame(uvTitle, ancillary, 53, 24) + "attributeMask: 0xffffffff80000082\n"
                                                                 "1 \n"
                                                                 "  : 1\n"
                                                                 "  : 1\n"
                                                                 "7 \n"
                                                                 "  : 7\n"
                                                                 "  : 7\n");
}

TEST(FltRecordUVListTest, LayersAreCountedAsInAMultitexture)
{
    UVList list(8);
    list.attributeMask = 2;
    EXPECT_FALSE(list.hasLayerN(0));
    EXPECT_TRUE(list.hasLayerN(1));
    EXPECT_TRUE(list.hasLayerN(33));
    EXPECT_FALSE(list.hasLayerN(-1));
}

} // namespace
