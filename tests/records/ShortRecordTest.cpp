#include "records/FltRecordFace.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordVertex.h"
#include "records/FltUtils.h"
#include "support/ShortRecords.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <new>

// A record may be shorter than its layout, and its decoder reads on into what follows it in the file.

namespace
{

/// Layouts that are read to their end whatever the length of the record says.
char const* const fixedLayouts[] = {
    "Group",
    "OLDLOD",
    "Object",
    "Face",
    "DOF",
    "Matrix",
    "Vector",
    "Replicate",
    "ExternalReference",
    "VertexPalette",
    "VertexColor",
    "VertexColorNormal",
    "VertexColorUv",
    "VertexColorNormalUv",
    "LOD",
    "RotateAboutEdge",
    "Translate",
    "ScaleNonUniform",
    "RotateAboutPoint",
    "PutTransform",
    "GeneralMatrix",
    "ClipRegion",
    "OldVertex",
    "OldVertexColor",
    "OldVertexColorNormal",
};

/// Layouts of which a part depends on the length of the record.
char const* const countedLayouts[] = {
    "VertexList",        "MorphVertexList",        "Switch",
    "OldVertexTextured", "OldVertexColorTextured", "OldVertexColorNormalTextured",
};

int const revisions[] = {11, 1421, 1500, 1540, 1580};

/// A database whose last record is of a layout, of at least @p size bytes, of which none is zero.
FltWriter filled(std::string_view layout, int revision, std::size_t size = 4)
{
    std::string bytes = FltWriter(revision).add(layout).lastRecord();
    int const opcode = FltUtils::word16At(bytes.data());
    bytes.resize(std::max(bytes.size(), size));
    for (std::size_t i = 4; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(1 + i % 61);
    return FltWriter(revision).addRaw(opcode, bytes.substr(4));
}

TEST(ShortRecordTest, AFixedLayoutContinuesInTheBytesAfterAShortRecordAndThenInZeros)
{
    for (char const* layout : fixedLayouts)
        for (int revision : revisions) {
            SCOPED_TRACE(layout + (" of revision " + std::to_string(revision)));
            expectShortRecordsToReadOn(filled(layout, revision));
        }
}

TEST(ShortRecordTest, ACountedLayoutDecodesAtEveryLengthOrIsRefusedByTheAllocator)
{
    StreamCapture const reports(std::cerr);
    for (std::string const& behind : followers())
        for (char const* layout : countedLayouts)
            for (int revision : revisions) {
                FltWriter const whole = filled(layout, revision, 80);
                for (std::size_t length = 4; length <= whole.lastRecord().size(); ++length) {
                    try {
                        auto const cut = decodeLast(cutTo(whole, length, behind));
                        EXPECT_EQ(cut->getLength(), length);
                        EXPECT_FALSE(dumpOf(*cut).empty());
                    } catch (std::bad_alloc const&) {
                        EXPECT_STREQ(layout, "Switch");
                    }
                }
            }
}

TEST(ShortRecordTest, ReplicateOfLength4TakesItsNumberFromTheLevelBehindIt)
{
    FltWriter flt = FltWriter().add("Replicate").resizeLast(4);
    auto const atEnd = decodeLastAs<FltRecordReplicate>(flt);
    ASSERT_NE(atEnd, nullptr);
    EXPECT_EQ(atEnd->numberOfReplications, 0);
    EXPECT_EQ(atEnd->reserved, 0);
    flt.addBytes(FltWriter::big16(10) + FltWriter::big16(4) + FltWriter::big16(11));
    auto const followed = decodeLastAs<FltRecordReplicate>(flt);
    ASSERT_NE(followed, nullptr);
    EXPECT_EQ(followed->numberOfReplications, 0x000A0004);
    EXPECT_EQ(followed->reserved, 0x000B0000) << "two bytes of the file, then zeros";
}

TEST(ShortRecordTest, VertexColorOfLength34TakesTheRestOfItsColorFromTheRecordBehindIt)
{
    FltWriter flt(1570);
    flt.vertex("VertexColor", 1, 2, 3, {{"packedColor", {9, 8, 7, 6}}, {"vertexColorIndex", 5}});
    flt.resizeLast(34).addBytes(FltWriter::big16(0x4445) + FltWriter::big16(0x0102));
    auto const record = decodeLastAs<FltRecordVertexColor>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->Zcoordinate, 3);
    EXPECT_EQ(std::vector<int>(std::begin(record->packedColor), std::end(record->packedColor)),
              (std::vector<int>{9, 8, 0x44, 0x45}));
    EXPECT_EQ(record->vertexColorIndex, 0x01020000);
}

TEST(ShortRecordTest, FaceOfRevision1500AndTheOldLengthTakesItsColorIndexFromTheRecordBehindIt)
{
    FltWriter flt(1500);
    flt.add("Face", {{"colorNameIndex", 3}}).resizeLast(64);
    flt.addBytes(FltWriter::big16(10) + FltWriter::big16(4) + FltWriter::big16(72) + FltWriter::big16(8) +
                 FltWriter::big32(8));
    auto const face = decodeLastAs<FltRecordFace>(flt);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->textureMappingIndex, 10);
    EXPECT_EQ(face->reserved5, 4);
    EXPECT_EQ(face->primaryColorIndex, 0x00480008);
    EXPECT_EQ(face->alternateColorIndex, 8);
    EXPECT_EQ(face->reserved6, 0);
    EXPECT_EQ(face->reserved7, 0);
}

TEST(ShortRecordTest, GroupOfRevision1421AndTheOldLengthTakesItsLastWordFromTheRecordBehindIt)
{
    FltWriter flt(1421);
    flt.add("Group", {{"layerCode", 7}}).resizeLast(28).addBytes(FltWriter::big16(10) + FltWriter::big16(4));
    auto const group = decodeLastAs<FltRecordGroup>(flt);
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->layerCode, 7);
    EXPECT_EQ(group->reserved3, 0x000A0004);
}

} // namespace
