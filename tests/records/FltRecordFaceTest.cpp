#include "records/FltRecordFace.h"

#include "support/FlagLines.h"
#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

std::string const primary = "PRIMARY_RECORD";

FltWriter::Fields const fieldsOfEveryRevision = {{"idField", "f1"},
                                                 {"IRColorCode", -100000},
                                                 {"relativePriority", -2},
                                                 {"drawType", 255},
                                                 {"textureWhite", 1},
                                                 {"colorNameIndex", 65535},
                                                 {"alternateColorNameIndex", 65534},
                                                 {"templateBillboard", -3},
                                                 {"detailTexturePatternIndex", -4},
                                                 {"texturePatternIndex", 65535},
                                                 {"materialIndex", 5},
                                                 {"surfaceMaterialCode", 6},
                                                 {"idFeature", -7},
                                                 {"IRMaterialCode", 100001},
                                                 {"transparency", 65535},
                                                 {"LODGenerationControl", 254},
                                                 {"lineStyleIndex", 253},
                                                 {"flags", 0xA8000001U},
                                                 {"lightMode", 252},
                                                 {"packedColor", {255, 128, 64, 0}},
                                                 {"alternatePackedColor", {0, 51, 1, 255}}};

FltWriter faceOfRevision(int revision)
{
    FltWriter::Fields fields = fieldsOfEveryRevision;
    if (revision >= 1500)
        fields.insert(
            fields.end(),
            {{"textureMappingIndex", -8}, {"primaryColorIndex", -9}, {"alternateColorIndex", 2000000000}});
    return FltWriter(revision).add("Face", fields);
}

std::string const linesOfEveryRevision = "idField: f1\n"
                                         "IRColorCode: -100000\n"
                                         "relativePriority: -2\n"
                                         "drawType: -1\n"
                                         "textureWhite: 1\n"
                                         "colorNameIndex: 65535\n"
                                         "alternateColorNameIndex: 65534\n"
                                         "templateBillboard: -3\n"
                                         "detailTexturePatternIndex: -4\n"
                                         "texturePatternIndex: -1\n"
                                         "materialIndex: 5\n"
                                         "surfaceMaterialCode: 6\n"
                                         "idFeature: -7\n"
                                         "IRMaterialCode: 100001\n"
                                         "transparency: 65535\n"
                                         "LODGenerationControl: 254\n"
                                         "lineStyleIndex: 253\n"
                                         "flags:           Terrain: 1\n"
                                         "                No Color: 0\n"
                                         "      No Alternate Color: 1\n"
                                         "            Packed Color: 0\n"
                                         "  Terrain Culture Cutout: 1\n"
                                         "      Hidden (not drawn): 0\n"
                                         "lightMode: 252\n"
                                         "packedColor: alpha=1\n"
                                         "              blue=0.501961\n"
                                         "             green=0.25098\n"
                                         "               red=0\n"
                                         "alternatePackedColor: alpha=0\n"
                                         "                       blue=0.2\n"
                                         "                      green=0.00392157\n"
                                         "                        red=1\n";

void expectFieldsOfEveryRevision(FltRecordFace const& face)
{
    EXPECT_STREQ(face.idField, "f1");
    EXPECT_EQ(face.IRColorCode, -100000);
    EXPECT_EQ(face.relativePriority, -2);
    EXPECT_EQ(face.drawType, -1);
    EXPECT_EQ(face.textureWhite, 1);
    EXPECT_EQ(face.colorNameIndex, 65535);
    EXPECT_EQ(face.alternateColorNameIndex, 65534);
    EXPECT_EQ(face.templateBillboard, -3);
    EXPECT_EQ(face.detailTexturePatternIndex, -4);
    EXPECT_EQ(face.texturePatternIndex, -1);
    EXPECT_EQ(face.materialIndex, 5);
    EXPECT_EQ(face.surfaceMaterialCode, 6);
    EXPECT_EQ(face.idFeature, -7);
    EXPECT_EQ(face.IRMaterialCode, 100001);
    EXPECT_EQ(face.transparency, 65535);
    EXPECT_EQ(face.LODGenerationControl, 254);
    EXPECT_EQ(face.lineStyleIndex, 253);
    EXPECT_EQ(face.flags, 0xA8000001U);
    EXPECT_EQ(face.lightMode, 252);
    EXPECT_EQ(std::vector<int>(std::begin(face.packedColor), std::end(face.packedColor)),
              (std::vector<int>{255, 128, 64, 0}));
    EXPECT_EQ(std::vector<int>(std::begin(face.alternatePackedColor), std::end(face.alternatePackedColor)),
              (std::vector<int>{0, 51, 1, 255}));
}

TEST(FltRecordFaceTest, Revision1500DecodesEveryFieldAndEndsWithThreeLines)
{
    auto const face = decodeLastAs<FltRecordFace>(faceOfRevision(1500));
    ASSERT_NE(face, nullptr);
    expectFieldsOfEveryRevision(*face);
    EXPECT_EQ(face->textureMappingIndex, -8);
    EXPECT_EQ(face->primaryColorIndex, -9);
    EXPECT_EQ(face->alternateColorIndex, 2000000000);
    EXPECT_EQ(dumpOf(*face), frame("\n FACE RECORD ", primary, 5, 80) + linesOfEveryRevision +
                                 "textureMappingIndex: -8\n"
                                 "primaryColorIndex: -9\n"
                                 "alternateColorIndex: 2000000000\n");
}

TEST(FltRecordFaceTest, Revision1499TakesBothColorIndicesFromTheColorNameZeroExtendedAndEndsWithOneLine)
{
    auto const face = decodeLastAs<FltRecordFace>(faceOfRevision(1499));
    ASSERT_NE(face, nullptr);
    expectFieldsOfEveryRevision(*face);
    EXPECT_EQ(face->textureMappingIndex, -1);
    EXPECT_EQ(face->primaryColorIndex, 65535);
    EXPECT_EQ(face->alternateColorIndex, 65535);
    EXPECT_EQ(dumpOf(*face),
              frame("\n FACE RECORD ", primary, 5, 64) + linesOfEveryRevision + "primaryColorIndex: 65535\n");
}

TEST(FltRecordFaceTest, Revision1400TakesTheAlternateColorIndexFromTheColorNameAndNotFromTheAlternateOne)
{
    auto const face = decodeLastAs<FltRecordFace>(
        FltWriter(1400).add("Face", {{"colorNameIndex", 37}, {"alternateColorNameIndex", 12}}));
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->primaryColorIndex, 37);
    EXPECT_EQ(face->alternateColorIndex, 37);
    EXPECT_EQ(face->textureMappingIndex, -1);
    std::string const dump = dumpOf(*face);
    std::string const end = "                        red=0\nprimaryColorIndex: 37\n";
    EXPECT_EQ(dump.substr(dump.size() - end.size()), end);
}

TEST(FltRecordFaceTest, OldRevisionsReadNothingBehindTheColors)
{
    std::string const tail = FltWriter::big16(9) + FltWriter::big16(9) + FltWriter::big32(9) +
                             FltWriter::big32(9) + FltWriter::big16(9) + FltWriter::big16(9);
    std::string const body = std::string(60, '\0') + tail;
    auto const before = decodeLastAs<FltRecordFace>(FltWriter(1499).addRaw(5, body));
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(before->textureMappingIndex, -1);
    EXPECT_EQ(before->reserved5, 0);
    EXPECT_EQ(before->primaryColorIndex, 0);
    EXPECT_EQ(before->alternateColorIndex, 0);
    EXPECT_EQ(before->reserved6, 0);
    EXPECT_EQ(before->reserved7, 0);
    auto const since = decodeLastAs<FltRecordFace>(FltWriter(1500).addRaw(5, body));
    ASSERT_NE(since, nullptr);
    EXPECT_EQ(since->textureMappingIndex, 9);
    EXPECT_EQ(since->reserved5, 9);
    EXPECT_EQ(since->primaryColorIndex, 9);
    EXPECT_EQ(since->alternateColorIndex, 9);
    EXPECT_EQ(since->reserved6, 9);
    EXPECT_EQ(since->reserved7, 9);
}

TEST(FltRecordFaceTest, ReservedFieldsAreKeptAndNotShown)
{
    std::string body(76, '\0');
    body[20] = '\1';
    body.replace(45, 7, "\2" + FltWriter::big16(3) + FltWriter::big32(4));
    auto const face = decodeLastAs<FltRecordFace>(FltWriter().addRaw(5, body));
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->reserved1, 1);
    EXPECT_EQ(face->reserved2, 2);
    EXPECT_EQ(face->reserved3, 3);
    EXPECT_EQ(face->reserved4, 4);
    EXPECT_EQ(dumpOf(*face), dumpOf(*decodeLast(FltWriter().addRaw(5, std::string(76, '\0')))));
}

TEST(FltRecordFaceTest, ANameOfEightCharactersEndsThere)
{
    auto const face = decodeLastAs<FltRecordFace>(
        FltWriter().add("Face", {{"idField", "EIGHTCHR"}, {"IRColorCode", 0x41414141}}));
    ASSERT_NE(face, nullptr);
    EXPECT_STREQ(face->idField, "EIGHTCHR");
    EXPECT_NE(dumpOf(*face).find("\nidField: EIGHTCHR\nIRColorCode: 1094795585\n"), std::string::npos);
}

TEST(FltRecordFaceTest, EachFlagBitHasItsLine)
{
    expectFlagLines("Face", "flags", 32,
                    {{31, "flags:           Terrain: "},
                     {30, "                No Color: "},
                     {29, "      No Alternate Color: "},
                     {28, "            Packed Color: "},
                     {27, "  Terrain Culture Cutout: "},
                     {26, "      Hidden (not drawn): "}});
}

FltWriter vertexList(std::vector<double> const& offsets)
{
    return FltWriter().add("VertexList", {{"offsets", offsets}});
}

TEST(FltRecordVertexListTest, DecodesAndDumpsItsOffsetsInFileOrder)
{
    auto const list = decodeLastAs<FltRecordVertexList>(vertexList({8, 64, -1, 2147483647}));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->vertexOffsets, (std::vector<int>{8, 64, -1, 2147483647}));
    EXPECT_EQ(dumpOf(*list),
              frame("\n VERTEX LIST RECORD ", primary, 72, 20) + "Offset: 8  64  -1  2147483647  \n");
}

TEST(FltRecordVertexListTest, Length4IsAnEmptyList)
{
    auto const list = decodeLastAs<FltRecordVertexList>(vertexList({}));
    ASSERT_NE(list, nullptr);
    EXPECT_TRUE(list->vertexOffsets.empty());
    EXPECT_EQ(dumpOf(*list), frame("\n VERTEX LIST RECORD ", primary, 72, 4) + "Offset: \n");
}

TEST(FltRecordVertexListTest, Length7IsAnEmptyListAndLength8HoldsOneOffset)
{
    auto const seven = decodeLastAs<FltRecordVertexList>(vertexList({5}).resizeLast(7));
    auto const eight = decodeLastAs<FltRecordVertexList>(vertexList({5}).resizeLast(8));
    ASSERT_NE(seven, nullptr);
    ASSERT_NE(eight, nullptr);
    EXPECT_TRUE(seven->vertexOffsets.empty());
    EXPECT_EQ(eight->vertexOffsets, std::vector<int>{5});
    EXPECT_EQ(dumpOf(*seven), frame("\n VERTEX LIST RECORD ", primary, 72, 7) + "Offset: \n");
}

TEST(FltRecordVertexListTest, ALengthBelow4IsAnEmptyList)
{
    for (unsigned length : {0U, 1U, 2U, 3U}) {
        auto const list = decodeLastAs<FltRecordVertexList>(vertexList({5, 6}).claimLength(length));
        ASSERT_NE(list, nullptr);
        EXPECT_TRUE(list->vertexOffsets.empty());
        EXPECT_EQ(dumpOf(*list), frame("\n VERTEX LIST RECORD ", primary, 72, length) + "Offset: \n");
    }
}

TEST(FltRecordVertexListTest, TheLongestListOfARecordIsReadAndDumpedWhole)
{
    std::vector<double> offsets;
    std::vector<int> expected;
    std::string line = "Offset: ";
    for (int i = 0; i < 16382; ++i) {
        offsets.push_back(8 + 40 * i);
        expected.push_back(8 + 40 * i);
        line += std::to_string(8 + 40 * i) + "  ";
    }
    auto const list = decodeLastAs<FltRecordVertexList>(vertexList(offsets));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->vertexOffsets, expected);
    EXPECT_EQ(dumpOf(*list), frame("\n VERTEX LIST RECORD ", primary, 72, 65532) + line + "\n");
}

using Entries = std::vector<std::pair<int, int>>;

FltWriter morphList(std::vector<double> const& offsets)
{
    return FltWriter().add("MorphVertexList", {{"offsets", offsets}});
}

TEST(FltRecordMorphVertexListTest, Length20Yields4PairsTheLastOfWhichEndsBehindTheRecord)
{
    FltWriter const flt = morphList({10, 20, 30, 40}).addBytes(FltWriter::big32(50));
    auto const list = decodeLastAs<FltRecordMorphVertexList>(flt);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->vertexOffsets, (Entries{{10, 20}, {20, 30}, {30, 40}, {40, 50}}));
    EXPECT_EQ(dumpOf(*list), frame("\n MORPH VERTEX LIST RECORD ", primary, 89, 20) +
                                 "Offset: (10,20)  (20,30)  (30,40)  (40,50)  \n");
}

TEST(FltRecordMorphVertexListTest, SecondMembersBeginCountBytesBehindTheFirstOnesOnAnyByte)
{
    FltWriter const flt = FltWriter()
                              .addRaw(89, std::string("\x00\x00\x00\x01\x02\x03\x04\x05\x06\x07\x08\x09", 12))
                              .addBytes("\x0A\x0B\x0C");
    auto const list = decodeLastAs<FltRecordMorphVertexList>(flt);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->vertexOffsets,
              (Entries{{0x00000001, 0x01020304}, {0x02030405, 0x05060708}, {0x06070809, 0x090A0B0C}}));
}

TEST(FltRecordMorphVertexListTest, AtTheEndOfTheFileTheMissingBytesAreZeros)
{
    auto const list = decodeLastAs<FltRecordMorphVertexList>(morphList({1, 2, 3, 4, 5}));
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->vertexOffsets, (Entries{{1, 0x200}, {2, 0x300}, {3, 0x400}, {4, 0x500}, {5, 0}}));
}

TEST(FltRecordMorphVertexListTest, LengthsBelow8AreEmptyLists)
{
    for (unsigned length = 0; length < 8; ++length) {
        auto const list = decodeLastAs<FltRecordMorphVertexList>(morphList({5, 6}).claimLength(length));
        ASSERT_NE(list, nullptr);
        EXPECT_TRUE(list->vertexOffsets.empty());
        EXPECT_EQ(dumpOf(*list), frame("\n MORPH VERTEX LIST RECORD ", primary, 89, length) + "Offset: \n");
    }
}

TEST(FltRecordMorphVertexListTest, ReachesACountOfBytesBehindItsEntries)
{
    EXPECT_EQ(FltRecordMorphVertexList::getReach(0), 4U);
    EXPECT_EQ(FltRecordMorphVertexList::getReach(7), 4U);
    EXPECT_EQ(FltRecordMorphVertexList::getReach(20), 24U);
    EXPECT_EQ(FltRecordMorphVertexList::getReach(23), 24U);
    EXPECT_EQ(FltRecordMorphVertexList::getReach(65535), 4U + 5 * 16382);
    Flt_15_7_CreationVisitor const visitor;
    EXPECT_EQ(visitor.getReach(89, 20), 24U);
}

} // namespace
