#include "records/FltFields.h"

#include "records/FltRecordFace.h"
#include "records/FltRecordTexturePattern.h"
#include "records/FltRecordVertex.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltFieldPlace, tellsWhereAFieldEnds)
{
    FltRecordVertexColorUv vertex(48);
    vertex.revision = 1570;
    EXPECT_EQ(FltFields::endOf(vertex, &vertex.colorNameIndex), 6U);
    EXPECT_EQ(FltFields::endOf(vertex, &vertex.Zcoordinate), 32U);
    EXPECT_EQ(FltFields::endOf(vertex, &vertex.texture), 40U);
    EXPECT_EQ(FltFields::endOf(vertex, &vertex.vertexColorIndex), 48U);
    FltRecordFace face(80);
    EXPECT_EQ(FltFields::endOf(face, &face.idField), 12U); // nine characters, of which the file has eight
}

TEST(FltFieldPlace, findsNoFieldThatARevisionDoesNotHave)
{
    FltRecordVertexColor vertex(36);
    vertex.revision = 1539;
    EXPECT_EQ(FltFields::endOf(vertex, &vertex.vertexColorIndex), 0U);
    int const other = 0;
    EXPECT_EQ(FltFields::endOf(vertex, &other), 0U);
}

TEST(FltFieldPlace, hasGatesAsTheRecordsOwnValuesHaveThem)
{
    FltRecordTexturePattern const brief(FltRecordTexturePattern::shortFormLength), whole(216);
    EXPECT_EQ(FltFields::endOf(brief, &brief.patternIndex), 88U);
    EXPECT_EQ(FltFields::endOf(whole, &whole.patternIndex), 208U);
    EXPECT_EQ(FltFields::bytesReadBy(brief), 216U); // what a decoder may read at the most
}

} // namespace
