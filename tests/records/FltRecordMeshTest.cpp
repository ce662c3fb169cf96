#include "records/FltRecordMesh.h"

#include "records/FltFields.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using Vertex = FltRecordLocalVertexPool::Vertex;

template <class Layout>
void decode(Layout& layout, std::string body)
{
    FltFields::decodeFrom(layout, body.data());
}

TEST(FltRecordMesh, isAFaceWithAReservedWordAfterItsId)
{
    std::string body = "mesh one" + FltWriter::big32(99) + FltWriter::big32(7) + FltWriter::big16(2);
    body += std::string(50, '\0') + FltWriter::big32(5) + FltWriter::big32(6) + std::string(4, '\0');
    std::string bytes = FltWriter::big16(FltOpcode::mesh) + FltWriter::big16(84) + body;
    FltRecordMesh mesh(84);
    mesh.revision = 1570;
    mesh.getPropertiesFromData(bytes.data());
    EXPECT_STREQ(mesh.idField, "mesh one");
    EXPECT_EQ(mesh.reservedOfMesh, 99);
    EXPECT_EQ(mesh.IRColorCode, 7);
    EXPECT_EQ(mesh.relativePriority, 2);
    EXPECT_EQ(mesh.primaryColorIndex, 5);
    EXPECT_EQ(mesh.alternateColorIndex, 6);
    EXPECT_EQ(FltFields::sizeOf(mesh), bytes.size() - 4);
    EXPECT_EQ(mesh.getOpcode(), 84);
}

TEST(FltRecordLocalVertexPool, beginsWithACountAndAMask)
{
    FltRecordLocalVertexPool pool;
    decode(pool, FltWriter::big32(3) + FltWriter::big32(0x90000000L));
    EXPECT_EQ(pool.numberOfVertices, 3U);
    EXPECT_EQ(pool.attributeMask, 0x90000000U);
}

TEST(FltRecordLocalVertexPool, hasVerticesThatHoldWhatTheMaskNames)
{
    Vertex vertex;
    vertex.mask = 0xF8000000U | 1U << 20;
    EXPECT_EQ(FltFields::sizeOf(vertex), 24U + 4 + 4 + 12 + 8 + 8);
    decode(vertex, FltWriter::bigDouble(1) + FltWriter::bigDouble(-2) + FltWriter::bigDouble(3) +
                       FltWriter::big32(-5) + "\1\2\3\4" + FltWriter::bigFloat(0.25) +
                       FltWriter::bigFloat(0.5) + FltWriter::bigFloat(-1) + FltWriter::bigFloat(6) +
                       FltWriter::bigFloat(7) + FltWriter::bigFloat(8) + FltWriter::bigFloat(9));
    EXPECT_EQ(vertex.position[0], 1);
    EXPECT_EQ(vertex.position[1], -2);
    EXPECT_EQ(vertex.position[2], 3);
    EXPECT_EQ(vertex.colorIndex, -5);
    EXPECT_EQ(vertex.packedColor[0], 1);
    EXPECT_EQ(vertex.packedColor[3], 4);
    EXPECT_EQ(vertex.normal[0], 0.25F);
    EXPECT_EQ(vertex.normal[2], -1);
    EXPECT_EQ(vertex.uv[0][1], 7);
    EXPECT_EQ(vertex.uv[1][0], 0);
    EXPECT_EQ(vertex.uv[7][0], 8);
    EXPECT_EQ(vertex.uv[7][1], 9);
    EXPECT_TRUE(vertex.hasLayer(0) && vertex.hasLayer(7));
    EXPECT_FALSE(vertex.hasLayer(1) || vertex.hasLayer(6));
}

TEST(FltRecordLocalVertexPool, leavesOutOfAVertexWhatTheMaskDoesNotName)
{
    Vertex vertex;
    EXPECT_EQ(FltFields::sizeOf(vertex), 0U);
    vertex.mask = Vertex::hasNormal;
    EXPECT_EQ(FltFields::sizeOf(vertex), 12U);
    decode(vertex, FltWriter::bigFloat(1) + FltWriter::bigFloat(2) + FltWriter::bigFloat(3));
    EXPECT_EQ(vertex.normal[1], 2);
    EXPECT_EQ(vertex.position[0], 0);
}

TEST(FltRecordMeshPrimitive, hasIndicesOfOneTwoOrFourBytes)
{
    FltRecordMeshPrimitive primitive;
    decode(primitive, FltWriter::big16(3) + FltWriter::big16(2) + FltWriter::big32(70000));
    EXPECT_EQ(primitive.primitiveType, FltRecordMeshPrimitive::quadStrip);
    EXPECT_EQ(primitive.indexCount, 70000U);
    for (std::int16_t const size : {std::int16_t(1), std::int16_t(2), std::int16_t(4)}) {
        primitive.indexSize = size;
        EXPECT_TRUE(primitive.hasIndices());
        FltRecordMeshPrimitive::Index index;
        index.size = size;
        EXPECT_EQ(FltFields::sizeOf(index), static_cast<std::size_t>(size));
        decode(index, std::string("\xff\xfe\xfd\xfc"));
        EXPECT_EQ(index.value(), 0xfffefdfcU >> (32 - 8 * size));
    }
    for (std::int16_t const size : {std::int16_t(0), std::int16_t(3), std::int16_t(5), std::int16_t(-1)}) {
        primitive.indexSize = size;
        EXPECT_FALSE(primitive.hasIndices()) << size;
    }
}

} // namespace
