#include "visual/FltFaceReader.h"

#include "support/CompleteDatabase.h"
#include "writer/FltMeshRecords.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoTextureUnit.h>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>

using Fields = FltWriter::Fields;
using Mesh = FltMeshRecords;

namespace
{

std::string big32s(std::vector<long> const& numbers)
{
    std::string bytes;
    for (long const number : numbers)
        bytes += FltWriter::big32(number);
    return bytes;
}

constexpr std::size_t lightMode = 48; ///< Of a mesh, after its opcode and length.

/// A mesh after its opcode and length, which shows its vertices' colours and isn't lit.
std::string meshBody()
{
    std::string body = Mesh::mesh();
    body[lightMode] = 1;
    return body;
}

std::string poolBody(std::vector<std::vector<double>> const& places)
{
    std::string body = Mesh::poolHead(places.size(), Mesh::hasPlace | Mesh::hasPackedColor);
    for (std::vector<double> const& place : places) {
        for (double const part : place)
            body += FltWriter::bigDouble(part);
        body += "\xff" + std::string("\0\0\xff", 3); // red
    }
    return body;
}

std::string primitiveBody(int type, std::string const& indices)
{
    return Mesh::primitiveHead(type, 1, indices.size()) + indices;
}

CompleteDatabase meshDatabase(int type, std::string const& indices)
{
    CompleteDatabase database;
    database.begin().add("Object").push().addRaw(Mesh::meshOpcode, meshBody());
    database.writer.addRaw(Mesh::poolOpcode,
                           poolBody({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 2, 0}, {1, 2, 0}}));
    database.writer.push().addRaw(Mesh::primitiveOpcode, primitiveBody(type, indices)).pop();
    return database;
}

DrawnScene drawnMesh(int type, std::string const& indices)
{
    return meshDatabase(type, indices).draw();
}

} // namespace

TEST(FltFaceReader, drawsAllPrimitivesOfMeshes)
{
    std::string const strip("\0\1\2\3\4\5", 6);
    DrawnScene const triangles = drawnMesh(1, strip);
    EXPECT_EQ(triangles.triangles.size(), 4U);
    EXPECT_NEAR(triangles.area(), 2, 1e-6);
    EXPECT_EQ(triangles.triangles[0].color(), "255 0 0 255");
    EXPECT_FALSE(triangles.triangles[0].isLit);
    for (DrawnScene::Primitive const& each : triangles.triangles)
        EXPECT_EQ((each.points[1] - each.points[0]).cross(each.points[2] - each.points[0])[2], 1);
    EXPECT_NEAR(drawnMesh(2, std::string("\0\1\3\2", 4)).area(), 1, 1e-6);
    EXPECT_NEAR(drawnMesh(3, strip).area(), 2, 1e-6);
    EXPECT_NEAR(drawnMesh(4, std::string("\0\1\5\4", 4)).area(), 2, 1e-6);
    EXPECT_EQ(drawnMesh(9, strip).triangles.size(), 0U);
}

TEST(FltFaceReader, leavesTrianglesOfMeshesOutWhoseIndexIsNone)
{
    EXPECT_EQ(drawnMesh(1, std::string("\0\1\2\77", 4)).triangles.size(), 1U);
    EXPECT_EQ(drawnMesh(4, std::string("\0\1\77\3\2", 5)).triangles.size(), 2U);
    EXPECT_EQ(drawnMesh(4, std::string("\0\1\77\3", 4)).triangles.size(), 1U) << "three corners are left";
    EXPECT_TRUE(drawnMesh(4, std::string("\0\1\77", 3)).triangles.empty());
}

TEST(FltFaceReader, countsTheFacesOfMeshesThatLackCorners)
{
    auto const lacking = [](std::string const& indices) {
        CompleteDatabase database = meshDatabase(1, indices);
        return database.see().leftOut["mesh index without a vertex"];
    };
    EXPECT_EQ(lacking(std::string("\0\1\2\3", 4)), 0U);
    EXPECT_EQ(lacking(std::string("\0\1\2\77", 4)), 1U);
    EXPECT_EQ(lacking(std::string("\0\1\2\77\3", 5)), 2U);
}

TEST(FltFaceReader, readsAllThatAPoolOfVerticesMayHold)
{
    constexpr long red = 127; // the first colour of the palette, at its full intensity
    CompleteDatabase database;
    database.writer.add("ColorPalette", {{"color", {0xff0000ff}}});
    std::string body = meshBody();
    body[lightMode] = 3; // its vertices' colours, lit
    std::string pool =
        Mesh::poolHead(3, Mesh::hasPlace | Mesh::hasColorIndex | Mesh::hasNormal | Mesh::hasTexture);
    for (int i = 0; i < 3; ++i) {
        for (double const part : {i * 1.0, i % 2 * 1.0, 0.0})
            pool += FltWriter::bigDouble(part);
        pool += FltWriter::big32(red);
        for (float const part : {0.6F, 0.0F, 0.8F, i * 0.5F, 1.0F}) // normal, texture
            pool += FltWriter::bigFloat(part);
    }
    database.begin().add("Object").push().addRaw(Mesh::meshOpcode, body).addRaw(Mesh::poolOpcode, pool);
    database.writer.push().addRaw(Mesh::primitiveOpcode, Mesh::primitive(Mesh::polygon, 4, {0, 1, 2}));
    DrawnScene const drawn = database.draw();
    ASSERT_EQ(drawn.triangles.size(), 1U);
    EXPECT_TRUE(drawn.triangles[0].isLit);
    EXPECT_EQ(drawn.triangles[0].color(), "255 0 0 255");
    EXPECT_TRUE(drawn.triangles[0].normals[1].equals(SbVec3f(0.6F, 0, 0.8F), 1e-6F));
}

TEST(FltFaceReader, drawsNothingOfPoolsAndPrimitivesThatSayNothing)
{
    CompleteDatabase database;
    database.begin().add("Object").push().addRaw(Mesh::meshOpcode, meshBody());
    database.writer.addRaw(Mesh::poolOpcode, Mesh::poolHead(9, Mesh::hasPackedColor) + std::string(36, 1))
        .push();
    database.writer.addRaw(Mesh::primitiveOpcode, primitiveBody(1, std::string("\0\1\2", 3)));
    database.writer.addRaw(Mesh::primitiveOpcode, Mesh::primitive(Mesh::triangleStrip, 3, {0, 0, 0}));
    database.writer.addRaw(Mesh::primitiveOpcode);
    EXPECT_TRUE(database.draw().triangles.empty());
}

TEST(FltFaceReader, readsPoolsThatAreContinued)
{
    std::vector<std::vector<double>> places;
    for (int post = 0; post < 2000; ++post)
        for (double const height : {0.0, 1.0})
            places.push_back({static_cast<double>(post), height, 0});
    std::string const pool = poolBody(places);
    CompleteDatabase database;
    database.begin().add("Object").push().addRaw(Mesh::meshOpcode, meshBody());
    database.writer.addRaw(Mesh::poolOpcode, pool.substr(0, 60000)).addRaw(23, pool.substr(60000)).push();
    std::vector<int> indices(4000);
    std::iota(indices.begin(), indices.end(), 0);
    database.writer.addRaw(Mesh::primitiveOpcode, Mesh::primitive(Mesh::triangleStrip, 2, indices));
    EXPECT_EQ(database.draw().triangles.size(), 3998U);
}

TEST(FltFaceReader, keepsTheOtherVerticesOfAFaceWithAWrongOffset)
{
    CompleteDatabase database;
    std::vector<double> offsets = database.square();
    offsets.insert(offsets.begin() + 2, 9);
    database.begin();
    database.object(offsets).object({offsets[0], 1, 2, offsets[1]}).object({-8, 1e9, 5});
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 2U);
    EXPECT_EQ(result.leftOut.at("vertex offset at which no vertex begins"), 6);
    EXPECT_EQ(result.leftOut.at("face with missing vertices"), 2);
    EXPECT_NE(database.messages.find("A face names an offset at which no vertex begins"), std::string::npos);
}

TEST(FltFaceReader, drawsFacesWhoseVerticesDifferInForm)
{
    CompleteDatabase database;
    std::vector<double> const offsets = {
        static_cast<double>(database.writer.vertex("VertexColor", 0, 0, 0)),
        static_cast<double>(
            database.writer.vertex("VertexColorNormal", 1, 0, 0, {{"vertexNormal", {1, 0, 0}}})),
        static_cast<double>(database.writer.vertex("VertexColorUv", 0, 1, 0))};
    database.begin();
    database.object(offsets);
    DrawnScene const drawn = database.draw();
    ASSERT_EQ(drawn.triangles.size(), 1U);
    EXPECT_EQ(drawn.triangles[0].normals[0], SbVec3f(0, 0, 1));
    EXPECT_EQ(drawn.triangles[0].normals[1], SbVec3f(1, 0, 0));
}

TEST(FltFaceReader, showsTheSecondPositionsOfMorphs)
{
    CompleteDatabase database;
    std::vector<double> const from = database.square();
    std::vector<double> const to = database.square(5);
    std::vector<double> pairs;
    for (std::size_t i = 0; i < 4; ++i)
        pairs.insert(pairs.end(), {from[i], to[i]});
    database.begin().add("Object").push().add("Face", CompleteDatabase::face()).push();
    database.writer.add("MorphVertexList", {{"offsets", pairs}});
    EXPECT_EQ(database.draw().extent(), "5 0 0 to 6 1 0");
}

TEST(FltFaceReader, drawsOldVerticesOfEachFaceOnce)
{
    for (char const* form : {"OldVertex", "OldVertexColor", "OldVertexColorNormal"}) {
        CompleteDatabase database(14);
        database.begin().add("Object").push();
        for (int face = 0; face < 2; ++face) {
            database.writer
                .add("Face", {{"texturePatternIndex", -1}, {"materialIndex", -1}, {"lightMode", 2}})
                .push();
            for (int i = 0; i < 3; ++i)
                database.writer.add(form, {{"Xcoordinate", 2 * face + i % 2}, {"Ycoordinate", i / 2}});
            database.writer.pop();
        }
        DrawnScene const drawn = database.draw();
        EXPECT_EQ(drawn.triangles.size(), 2U) << form;
        EXPECT_EQ(drawn.extent(), "0 0 0 to 3 1 0") << form;
    }
}

TEST(FltFaceReader, drawsFurtherTextureLayers)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    for (int index : {0, 1})
        database.writer.add("TexturePattern", {{"fileName", "none.rgb"}, {"patternIndex", index}});
    database.begin().add("Object").push();
    database.writer.add("Face", CompleteDatabase::face({{"texturePatternIndex", 0}}));
    database.writer.addRaw(52, big32s({0x40000000}) + FltWriter::big16(1) + std::string(6, '\0')).push();
    database.writer.add("VertexList", {{"offsets", offsets}});
    std::string uvs = big32s({0x40000000});
    for (int i = 0; i < 4; ++i)
        uvs += FltWriter::bigFloat(i) + FltWriter::bigFloat(0.5);
    database.writer.addRaw(53, uvs);
    CompleteDatabase::Converted const result = database.convert();
    SoSearchAction search;
    search.setType(SoTextureUnit::getClassTypeId());
    search.apply(result.root.get());
    ASSERT_NE(search.getPath(), nullptr);
    EXPECT_EQ(static_cast<SoTextureUnit*>(search.getPath()->getTail())->unit.getValue(), 2);
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 2U);
}

TEST(FltFaceReader, drawsLightPointsInTheColoursOfTheirVertices)
{
    CompleteDatabase database;
    std::vector<double> const offsets = {static_cast<double>(database.writer.vertex(
        "VertexColor", 1, 2, 3, {{"flags", 0x1000}, {"packedColor", CompleteDatabase::green}}))};
    database.begin().add("LightPoint", {{"idASCII", "lamps"}, {"actualPixelSize", 5}}).push();
    database.writer.add("VertexList", {{"offsets", offsets}});
    DrawnScene const drawn = database.draw();
    ASSERT_EQ(drawn.points.size(), 1U);
    EXPECT_EQ(drawn.points[0].color(), "0 255 0 255");
    EXPECT_FALSE(drawn.points[0].isLit);
}

TEST(FltFaceReader, passesOverVerticesThatAreNowhere)
{
    CompleteDatabase database;
    double const nan = std::numeric_limits<double>::quiet_NaN();
    std::vector<double> const offsets =
        database.polygon({{0, 0, 0}, {1, 0, 0}, {nan, 0, 0}, {1e300, 0, 0}, {0, 1, 0}});
    database.begin();
    database.object(offsets);
    EXPECT_EQ(database.draw().extent(), "0 0 0 to 1 1 0");
}
