#include "records/FltRecordVertex.h"

#include "support/FlagLines.h"
#include "support/RecordText.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <iterator>
#include <sstream>

namespace
{

std::string const palette = "PALETTE_RECORD";
std::string const primary = "PRIMARY_RECORD";

std::map<int, std::string> const flagLabels = {{15, "flags: Start Hard Edge: "},
                                               {14, "         Normal frozen: "},
                                               {13, "              No Color: "},
                                               {12, "          Packed Color: "}};

TEST(FltRecordVertexPaletteTest, DecodesAndDumpsItsUnsignedLength)
{
    auto const record = decodeLastAs<FltRecordVertexPalette>(FltWriter().vertexPalette(4294967295U));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->vertexPaletteTotalLength, 4294967295U);
    EXPECT_EQ(dumpOf(*record),
              frame("\n VERTEX PALETTE RECORD ", palette, 67, 8) + "vertexPaletteTotalLength: 4294967295\n");
}

/// A vertex with all that its form and revision have.
FltWriter vertex(std::string_view form, int revision)
{
    FltWriter flt(revision);
    FltWriter::Fields fields = {
        {"colorNameIndex", 65535}, {"flags", 0xAFFF}, {"packedColor", {255, 128, 64, 0}}};
    if (revision >= 1540)
        fields.push_back({"vertexColorIndex", -7});
    if (form.find("Normal") != form.npos)
        fields.push_back({"vertexNormal", {0.5, -0.25, 0.75}});
    if (form.find("Uv") != form.npos)
        fields.push_back({"texture", {1.5, -2.5}});
    flt.vertex(form, 1.25, -2.5, 1e7, fields);
    return flt;
}

std::string joined(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (std::string_view part : parts)
        text += part;
    return text;
}

template <class Record>
std::unique_ptr<Record> decodeVertex(std::string_view form, int revision)
{
    auto record = decodeLastAs<Record>(vertex(form, revision));
    if (record == nullptr) {
        ADD_FAILURE() << form;
        return std::make_unique<Record>(0U);
    }
    EXPECT_EQ(record->colorNameIndex, 65535);
    EXPECT_EQ(record->flags, 0xAFFF);
    EXPECT_EQ(record->Xcoordinate, 1.25);
    EXPECT_EQ(record->Ycoordinate, -2.5);
    EXPECT_EQ(record->Zcoordinate, 1e7);
    EXPECT_EQ(std::vector<int>(std::begin(record->packedColor), std::end(record->packedColor)),
              (std::vector<int>{255, 128, 64, 0}));
    EXPECT_EQ(record->vertexColorIndex, revision >= 1540 ? -7 : -1);
    return record;
}

std::string const headLines = "colorNameIndex: 65535\n"
                              "flags: Start Hard Edge: 1\n"
                              "         Normal frozen: 0\n"
                              "              No Color: 1\n"
                              "          Packed Color: 0\n"
                              "Xcoordinate: 1.25\n"
                              "Ycoordinate: -2.5\n"
                              "Zcoordinate: 1e+07\n";
std::string const normalLines = "vertexNormal: i=0.5\n"
                                "              j=-0.25\n"
                                "              k=0.75\n";
std::string const textureLines = "texture: u=1.5\n"
                                 "         v=-2.5\n";
std::string const colorLines = "packedColor: alpha=1\n"
                               "              blue=0.501961\n"
                               "             green=0.25098\n"
                               "               red=0\n";
std::string const oldEnd = "vertexColorIndex: -1\n";
std::string const newEnd = "vertexColorIndex: -7\n";

TEST(FltRecordVertexColorTest, HasItsColorIndexFromRevision1540OnAndMinusOneBefore)
{
    auto const before = decodeVertex<FltRecordVertexColor>("VertexColor", 1539);
    EXPECT_EQ(before->getOpcode(), 68);
    EXPECT_EQ(dumpOf(*before),
              frame("\n VERTEX COLOR RECORD ", palette, 68, 36) + headLines + colorLines + oldEnd);
    auto const since = decodeVertex<FltRecordVertexColor>("VertexColor", 1540);
    EXPECT_EQ(dumpOf(*since),
              frame("\n VERTEX COLOR RECORD ", palette, 68, 40) + headLines + colorLines + newEnd);
}

TEST(FltRecordVertexColorTest, Revision1539DoesNotReadOffset36)
{
    std::string const body = std::string(32, '\0') + FltWriter::big32(5);
    auto const before = decodeLastAs<FltRecordVertexColor>(FltWriter(1539).addRaw(68, body));
    auto const since = decodeLastAs<FltRecordVertexColor>(FltWriter(1540).addRaw(68, body));
    ASSERT_NE(before, nullptr);
    ASSERT_NE(since, nullptr);
    EXPECT_EQ(before->vertexColorIndex, -1);
    EXPECT_EQ(since->vertexColorIndex, 5);
}

TEST(FltRecordVertexColorTest, EachFlagBitHasItsLine)
{
    for (char const* form : {"VertexColor", "VertexColorNormal", "VertexColorNormalUv", "VertexColorUv"})
        expectFlagLines(form, "flags", 16, flagLabels);
}

TEST(FltRecordVertexColorTest, NoColorTogetherWithPackedColorKeepsTheBytes)
{
    auto const record = decodeLastAs<FltRecordVertexColor>(
        FltWriter().add("VertexColor", {{"flags", 0x3000}, {"packedColor", {1, 2, 3, 4}}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->flags, 0x3000);
    EXPECT_EQ(std::vector<int>(std::begin(record->packedColor), std::end(record->packedColor)),
              (std::vector<int>{1, 2, 3, 4}));
}

TEST(FltRecordVertexColorTest, WritesItsDumpInTwoHalves)
{
    auto const record = decodeVertex<FltRecordVertexColor>("VertexColor", 1570);
    std::ostringstream first;
    std::ostringstream second;
    EXPECT_EQ(&record->properties1(first), &first);
    EXPECT_EQ(&record->properties2(second), &second);
    EXPECT_EQ(first.str(), headLines);
    EXPECT_EQ(second.str(), colorLines + newEnd);
}

TEST(FltRecordVertexColorNormalTest, DecodesAndDumpsAtEachSideOfRevisions1540And1580)
{
    struct {
        int revision;
        unsigned length;
        std::string const& end;
    } const cases[] = {{1539, 48, oldEnd}, {1540, 52, newEnd}, {1579, 52, newEnd}, {1580, 56, newEnd}};
    for (auto const& [revision, length, end] : cases) {
        auto const record = decodeVertex<FltRecordVertexColorNormal>("VertexColorNormal", revision);
        EXPECT_EQ(std::vector<float>(std::begin(record->vertexNormal), std::end(record->vertexNormal)),
                  (std::vector<float>{0.5F, -0.25F, 0.75F}));
        EXPECT_EQ(dumpOf(*record), joined({frame("\n VERTEX COLOR NORMAL RECORD ", palette, 69, length),
                                           headLines, normalLines, colorLines, end}))
            << revision;
    }
}

TEST(FltRecordVertexColorNormalTest, ReadsItsLastWordFromRevision1580OnWithNoChangeInTheDump)
{
    std::string const body = std::string(44, '\0') + FltWriter::big32(5) + FltWriter::big32(6);
    auto const before = decodeLastAs<FltRecordVertexColorNormal>(FltWriter(1579).addRaw(69, body));
    auto const since = decodeLastAs<FltRecordVertexColorNormal>(FltWriter(1580).addRaw(69, body));
    ASSERT_NE(before, nullptr);
    ASSERT_NE(since, nullptr);
    EXPECT_EQ(before->vertexColorIndex, 5);
    EXPECT_EQ(before->reserved, 0);
    EXPECT_EQ(since->vertexColorIndex, 5);
    EXPECT_EQ(since->reserved, 6);
    EXPECT_EQ(dumpOf(*before), dumpOf(*since));
}

TEST(FltRecordVertexColorNormalTest, Revision1539ReadsNothingBehindThePackedColor)
{
    std::string const body = std::string(44, '\0') + FltWriter::big32(5) + FltWriter::big32(6);
    auto const record = decodeLastAs<FltRecordVertexColorNormal>(FltWriter(1539).addRaw(69, body));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->vertexColorIndex, -1);
    EXPECT_EQ(record->reserved, 0);
}

TEST(FltRecordVertexColorNormalUvTest, DecodesAndDumpsAtEachSideOfRevisions1540And1580)
{
    struct {
        int revision;
        unsigned length;
        std::string const& end;
    } const cases[] = {{1539, 56, oldEnd}, {1540, 60, newEnd}, {1579, 60, newEnd}, {1580, 64, newEnd}};
    for (auto const& [revision, length, end] : cases) {
        auto const record = decodeVertex<FltRecordVertexColorNormalUv>("VertexColorNormalUv", revision);
        EXPECT_EQ(std::vector<float>(std::begin(record->vertexNormal), std::end(record->vertexNormal)),
                  (std::vector<float>{0.5F, -0.25F, 0.75F}));
        EXPECT_EQ(std::vector<float>(std::begin(record->texture), std::end(record->texture)),
                  (std::vector<float>{1.5F, -2.5F}));
        EXPECT_EQ(dumpOf(*record), joined({frame("\n VERTEX COLOR NORMAL UV RECORD ", palette, 70, length),
                                           headLines, normalLines, textureLines, colorLines, end}))
            << revision;
    }
}

TEST(FltRecordVertexColorNormalUvTest, ReadsItsLastWordFromRevision1580OnWithNoChangeInTheDump)
{
    std::string const body = std::string(52, '\0') + FltWriter::big32(5) + FltWriter::big32(6);
    auto const before = decodeLastAs<FltRecordVertexColorNormalUv>(FltWriter(1579).addRaw(70, body));
    auto const since = decodeLastAs<FltRecordVertexColorNormalUv>(FltWriter(1580).addRaw(70, body));
    ASSERT_NE(before, nullptr);
    ASSERT_NE(since, nullptr);
    EXPECT_EQ(before->reserved, 0);
    EXPECT_EQ(since->reserved, 6);
    EXPECT_EQ(since->vertexColorIndex, 5);
    EXPECT_EQ(dumpOf(*before), dumpOf(*since));
}

TEST(FltRecordVertexColorUvTest, HasItsColorIndexFromRevision1540OnAndMinusOneBefore)
{
    struct {
        int revision;
        unsigned length;
        std::string const& end;
    } const cases[] = {{1539, 44, oldEnd}, {1540, 48, newEnd}, {1580, 48, newEnd}};
    for (auto const& [revision, length, end] : cases) {
        auto const record = decodeVertex<FltRecordVertexColorUv>("VertexColorUv", revision);
        EXPECT_EQ(std::vector<float>(std::begin(record->texture), std::end(record->texture)),
                  (std::vector<float>{1.5F, -2.5F}));
        EXPECT_EQ(dumpOf(*record), joined({frame("\n VERTEX COLOR UV (TEXTURE) RECORD ", palette, 71, length),
                                           headLines, textureLines, colorLines, end}))
            << revision;
    }
}

FltWriter::Fields oldFields(bool hasColor, bool hasNormal, bool hasTexture)
{
    FltWriter::Fields fields = {{"Xcoordinate", -1}, {"Ycoordinate", 2000000000}, {"Zcoordinate", 3}};
    if (hasColor)
        fields.insert(fields.end(), {{"hardEdgeFlag", "H"}, {"shadingFlag", "s"}, {"colorIndex", 65535}});
    if (hasNormal)
        fields.push_back({"vertexNormalScaled", {0.5, 1073741824, -2.5}});
    if (hasTexture)
        fields.push_back({"texture", {0.25, -0.75}});
    return fields;
}

void expectOldCoordinates(AbstractOldVertexRecord const& record)
{
    EXPECT_EQ(record.Xcoordinate, -1);
    EXPECT_EQ(record.Ycoordinate, 2000000000);
    EXPECT_EQ(record.Zcoordinate, 3);
}

std::string const oldLines = "Xcoordinate: -1\nYcoordinate: 2000000000\nZcoordinate: 3\n";
std::string const oldColorLines = "hardEdgeFlag: H\nshadingFlag: s\ncolorIndex : 65535\n";
std::string const oldNormalLines = "vertexNormalScaled: i=0.5\n"
                                   "                    j=1.07374e+09\n"
                                   "                    k=-2.5\n";
std::string const oldTextureLines = "texture: u=0.25\n         v=-0.75\n";

std::string const oldTitle = "\n OLD VERTEX RECORD (OBSOLETE)";
std::string const oldColorTitle = "\n OLD VERTEX COLOR RECORD (OBSOLETE)";
std::string const oldColorNormalTitle = "\n OLD VERTEX COLOR NORMAL RECORD (OBSOLETE)";

TEST(FltRecordOldVertexTest, WithTextureAtLength24)
{
    auto const record = decodeLastAs<FltRecordOldVertex>(
        FltWriter(12).add("OldVertexTextured", oldFields(false, false, true)));
    ASSERT_NE(record, nullptr);
    expectOldCoordinates(*record);
    EXPECT_TRUE(record->hasTexture());
    EXPECT_EQ(record->getLength(), 24U);
    EXPECT_EQ(record->texture[0], 0.25F);
    EXPECT_EQ(record->texture[1], -0.75F);
    EXPECT_EQ(dumpOf(*record), frame(oldTitle, primary, 7, 24) + oldLines + oldTextureLines);
}

TEST(FltRecordOldVertexTest, AnyOtherLengthKeepsTheTextureAtZeroAndPrintsNoTextureLines)
{
    for (unsigned length : {16U, 23U, 25U, 28U, 40U}) {
        auto const record = decodeLastAs<FltRecordOldVertex>(
            FltWriter(12).add("OldVertexTextured", oldFields(false, false, true)).resizeLast(length));
        ASSERT_NE(record, nullptr);
        expectOldCoordinates(*record);
        EXPECT_FALSE(record->hasTexture());
        EXPECT_EQ(record->getLength(), length);
        EXPECT_EQ(record->texture[0], 0.0F);
        EXPECT_EQ(record->texture[1], 0.0F);
        EXPECT_EQ(dumpOf(*record), joined({frame(oldTitle, primary, 7, length), oldLines}));
    }
}

TEST(FltRecordOldVertexColorTest, WithTextureAtLength28)
{
    auto const record = decodeLastAs<FltRecordOldVertexColor>(
        FltWriter(12).add("OldVertexColorTextured", oldFields(true, false, true)));
    ASSERT_NE(record, nullptr);
    expectOldCoordinates(*record);
    EXPECT_EQ(record->hardEdgeFlag, 'H');
    EXPECT_EQ(record->shadingFlag, 's');
    EXPECT_EQ(record->colorIndex, 65535);
    EXPECT_TRUE(record->hasTexture());
    EXPECT_EQ(record->texture[0], 0.25F);
    EXPECT_EQ(record->texture[1], -0.75F);
    EXPECT_EQ(dumpOf(*record),
              frame(oldColorTitle, primary, 8, 28) + oldLines + oldColorLines + oldTextureLines);
}

TEST(FltRecordOldVertexColorTest, AnyOtherLengthReadsAndPrintsNoTexture)
{
    for (unsigned length : {20U, 24U, 27U, 29U, 40U}) {
        auto const record = decodeLastAs<FltRecordOldVertexColor>(
            FltWriter(12).add("OldVertexColorTextured", oldFields(true, false, true)).resizeLast(length));
        ASSERT_NE(record, nullptr);
        EXPECT_FALSE(record->hasTexture());
        EXPECT_EQ(dumpOf(*record),
                  joined({frame(oldColorTitle, primary, 8, length), oldLines, oldColorLines}));
    }
}

TEST(FltRecordOldVertexColorTest, AHardEdgeFlagOfZeroWritesAZeroByte)
{
    auto const record = decodeLast(FltWriter(12).add("OldVertexColor"));
    EXPECT_EQ(dumpOf(*record),
              frame(oldColorTitle, primary, 8, 20) + "Xcoordinate: 0\nYcoordinate: 0\nZcoordinate: 0\n" +
                  std::string("hardEdgeFlag: \0\nshadingFlag: \0\n", 31) + "colorIndex : 0\n");
}

TEST(FltRecordOldVertexColorNormalTest, WithTextureAtLength40)
{
    auto const record = decodeLastAs<FltRecordOldVertexColorNormal>(
        FltWriter(12).add("OldVertexColorNormalTextured", oldFields(true, true, true)));
    ASSERT_NE(record, nullptr);
    expectOldCoordinates(*record);
    EXPECT_EQ(record->hardEdgeFlag, 'H');
    EXPECT_EQ(record->shadingFlag, 's');
    EXPECT_EQ(record->colorIndex, 65535);
    EXPECT_EQ(record->vertexNormalScaled[0], 0.5F);
    EXPECT_EQ(record->vertexNormalScaled[1], 1073741824.0F);
    EXPECT_EQ(record->vertexNormalScaled[2], -2.5F);
    EXPECT_TRUE(record->hasTexture());
    EXPECT_EQ(record->texture[0], 0.25F);
    EXPECT_EQ(record->texture[1], -0.75F);
    EXPECT_EQ(dumpOf(*record), frame(oldColorNormalTitle, primary, 9, 40) + oldLines + oldColorLines +
                                   oldNormalLines + oldTextureLines);
}

TEST(FltRecordOldVertexColorNormalTest, AnyOtherLengthReadsAndPrintsNoTexture)
{
    for (unsigned length : {32U, 39U, 41U, 48U}) {
        auto const record = decodeLastAs<FltRecordOldVertexColorNormal>(
            FltWriter(12)
                .add("OldVertexColorNormalTextured", oldFields(true, true, true))
                .resizeLast(length));
        ASSERT_NE(record, nullptr);
        EXPECT_FALSE(record->hasTexture());
        EXPECT_EQ(dumpOf(*record), joined({frame(oldColorNormalTitle, primary, 9, length), oldLines,
                                           oldColorLines, oldNormalLines}));
    }
}

} // namespace
