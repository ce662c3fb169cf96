#include "model/FltRecordView.h"

#include "records/FltRecordFace.h"
#include "records/FltRecordIndexedString.h"
#include "records/FltRecordReplicate.h"
#include "records/FltRecordVertex.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

FltRecordView viewOf(std::string const& bytes)
{
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size()), 0, 0};
}

std::string vertexBytes(std::size_t size)
{
    std::string bytes = std::string(8, '\0') + FltWriter::bigDouble(1) + FltWriter::bigDouble(2) +
                        FltWriter::bigDouble(3) + "\1\2\3\4" + FltWriter::big32(77);
    return bytes.substr(0, size);
}

/// A layout of more bytes than most.
struct Long {
    char characters[600] = {};

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("characters", self.characters);
    }
};

TEST(FltRecordView, fillsAShortRecordUpWithZeros)
{
    std::string const bytes = std::string(4, '\0') + FltWriter::big32(5) + std::string("\1\1");
    FltDecoded<FltRecordReplicate> const record(viewOf(bytes));
    EXPECT_EQ(record.numberOfReplications, 5);
    EXPECT_EQ(record.reserved, 0x01010000);
    EXPECT_EQ(record.getLength(), 10U);
}

TEST(FltRecordView, fillsUpRecordsOfManyBytesToo)
{
    std::string const bytes = std::string(4, '\0') + FltWriter::big32(5);
    FltRecordIndexedString string(0);
    viewOf(bytes).decodeTo(string);
    EXPECT_EQ(string.index, 5U);
    Long many;
    many.characters[4] = 'x';
    viewOf(bytes).decodeTo(many);
    EXPECT_EQ(many.characters[3], 5);
    EXPECT_EQ(many.characters[4], 0);
}

TEST(FltRecordView, decodesByTheRevision)
{
    std::string const bytes = vertexBytes(40);
    EXPECT_EQ(FltDecoded<FltRecordVertexColor>(viewOf(bytes), 1540).vertexColorIndex, 77);
    EXPECT_EQ(FltDecoded<FltRecordVertexColor>(viewOf(bytes), 1539).vertexColorIndex, -1);
}

TEST(FltRecordView, tellsWhetherARecordHeldAField)
{
    for (std::size_t const size : {std::size_t(36), std::size_t(39), std::size_t(40)}) {
        std::string const bytes = vertexBytes(size);
        FltRecordView const view = viewOf(bytes);
        FltDecoded<FltRecordVertexColor> const vertex(view, 1540);
        EXPECT_TRUE(view.holdsField<FltRecordVertexColor>(vertex, vertex.packedColor)) << size;
        EXPECT_EQ(view.holdsField<FltRecordVertexColor>(vertex, vertex.vertexColorIndex), size == 40) << size;
    }
    std::string const bytes = vertexBytes(40);
    FltRecordView const view = viewOf(bytes);
    FltDecoded<FltRecordVertexColor> const old(view, 1539);
    EXPECT_FALSE(view.holdsField<FltRecordVertexColor>(old, old.vertexColorIndex));
}

TEST(FltRecordView, decodesFieldsOfABaseOnly)
{
    struct Face : FltRecordFace {
        using FltRecordFace::FltRecordFace;
        void getPropertiesFromData(char* /*data*/) override { FAIL(); }
    } face(80);
    std::string const bytes = std::string(4, '\0') + "ABCDEFGH" + FltWriter::big32(3);
    viewOf(bytes).decodeFieldsTo<FltRecordFace>(face);
    EXPECT_STREQ(face.idField, "ABCDEFGH");
    EXPECT_EQ(face.IRColorCode, 3);
}

TEST(FltRecordView, readsZeroAfterTheEndWhateverStandsThere)
{
    std::string const bytes = "\1\2\3\4\5\6\7\7\7\7\7\7";
    FltRecordView view = viewOf(bytes);
    view.size = 6;
    EXPECT_TRUE(view.holds(6, 0));
    EXPECT_FALSE(view.holds(7, 0));
    EXPECT_TRUE(view.holds(2, 4));
    EXPECT_FALSE(view.holds(2, 5));
    EXPECT_EQ(view.byteAt(5), 6);
    EXPECT_EQ(view.byteAt(6), 0);
    EXPECT_EQ(view.word16At(4), 0x0506);
    EXPECT_EQ(view.word16At(5), 0);
    EXPECT_EQ(view.word32At(2), 0x03040506U);
    EXPECT_EQ(view.word32At(3), 0U);
    EXPECT_EQ(view.textAt(4), "\5\6");
    EXPECT_EQ(view.textAt(0, 2), "\1\2");
    EXPECT_EQ(view.textAt(6), "");
}

} // namespace
