#include "visual/FltMeshJoiner.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace
{

using Source = FltMeshJoiner::Source;

/// A lit triangle with a texture and a further one.
FltMesh triangle(std::uint32_t color = 0xff0000ff)
{
    FltMesh mesh;
    mesh.texture = 1;
    mesh.positions = {SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)};
    mesh.normals = {SbVec3f(0, 0, 1), SbVec3f(0, 0, 1), SbVec3f(0.6F, 0, 0.8F)};
    mesh.uvs = {SbVec2f(0, 0), SbVec2f(1, 0), SbVec2f(0, 1)};
    mesh.colors = {color};
    mesh.layers = {{2, 3, {SbVec2f(0.5F, 0), SbVec2f(1, 0), SbVec2f(0, 2)}}};
    mesh.indices = {0, 1, 2, FltMesh::end};
    return mesh;
}

SbDPMatrix by(double x, double scale = 1)
{
    SbDPMatrix matrix;
    matrix.setScale(scale);
    matrix[3][0] = x;
    return matrix;
}

FltMesh join(std::vector<Source> sources)
{
    std::vector<Source*> all;
    for (Source& source : sources)
        all.push_back(&source);
    return FltMeshJoiner::join(all, 1);
}

} // namespace

TEST(FltMeshJoiner, putsCornersOneAfterTheOtherWhereTheyStand)
{
    FltMesh const joined = join({{triangle(), by(0), {100, 1}}, {triangle(), by(5, 2), {200, 1}}});
    ASSERT_EQ(joined.positions.size(), 6U);
    EXPECT_EQ(joined.positions[1], SbVec3f(1, 0, 0));
    EXPECT_EQ(joined.positions[4], SbVec3f(7, 0, 0));
    EXPECT_EQ(joined.indices, (std::vector<std::int32_t>{0, 1, 2, FltMesh::end, 3, 4, 5, FltMesh::end}));
    EXPECT_EQ(joined.uvs[5], SbVec2f(0, 1));
    ASSERT_EQ(joined.layers.size(), 1U);
    EXPECT_EQ(joined.layers[0].uvs.size(), 6U);
    EXPECT_EQ(joined.layers[0].uvs[5], SbVec2f(0, 2));
    EXPECT_EQ(joined.colors.size(), 1U);
}

TEST(FltMeshJoiner, tellsWhichFacesComeFromWhichRecord)
{
    FltMesh two = triangle();
    two.indices.insert(two.indices.end(), {0, 1, 2, FltMesh::end});
    FltMesh const joined = join({{two, by(0), {100, 1}}, {triangle(), by(1), {200, 3}}});
    ASSERT_EQ(joined.parts.size(), 2U);
    EXPECT_EQ(joined.parts[0].first, 0);
    EXPECT_EQ(joined.parts[0].record.offset, 100U);
    EXPECT_EQ(joined.parts[1].first, 2);
    EXPECT_EQ(joined.parts[1].record.offset, 200U);
    EXPECT_EQ(joined.parts[1].record.file, 3U);
}

TEST(FltMeshJoiner, countsPointsByTheirCorners)
{
    FltMesh points = triangle();
    points.kind = FltMesh::Kind::points;
    points.indices.clear();
    EXPECT_EQ(join({{points, by(0), {}}, {points, by(1), {}}}).parts[1].first, 3);
}

TEST(FltMeshJoiner, keepsTheColorOfEachCorner)
{
    FltMesh several = triangle();
    several.colors = {1, 2, 3};
    EXPECT_EQ(join({{triangle(7), by(0), {}}, {several, by(1), {}}, {triangle(8), by(2), {}}}).colors,
              (std::vector<std::uint32_t>{7, 7, 7, 1, 2, 3, 8, 8, 8}));
}

TEST(FltMeshJoiner, turnsNormalsWithTheirFacesAndKeepsTheirLength)
{
    SbDPMatrix turn; // x to y, and twice as high
    turn.makeIdentity();
    turn[0][0] = 0;
    turn[0][1] = 1;
    turn[1][0] = -1;
    turn[1][1] = 0;
    turn[2][2] = 2;
    FltMesh const joined = join({{triangle(), turn, {}}});
    EXPECT_EQ(joined.normals[0], SbVec3f(0, 0, 1));
    SbVec3f const expected(0, 0.83205F, 0.5547F); // 0.6 and 0.4, of length 1
    EXPECT_TRUE(joined.normals[2].equals(expected, 1e-8F)) << joined.normals[2].toString().getString();
}

TEST(FltMeshJoiner, keepsPlacesThatFloatsDoNotHold)
{
    FltMesh far = triangle();
    far.origin = {5e6, 0, 0};
    FltMesh const joined = join({{far, by(0.25), {}}, {far, by(2.25), {}}});
    EXPECT_DOUBLE_EQ(joined.origin[0] + double(joined.positions[0][0]), 5e6 + 0.25);
    EXPECT_DOUBLE_EQ(joined.origin[0] + double(joined.positions[4][0]), 5e6 + 3.25);
}

TEST(FltMeshJoiner, joinsOnlyWhatIsDrawnAtOnceAndWhole)
{
    EXPECT_TRUE(FltMeshJoiner::mayJoin(triangle()));
    std::vector<std::function<void(FltMesh&)>> const changes = {
        [](FltMesh& mesh) { mesh.isBlended = true; },
        [](FltMesh& mesh) { mesh.isHidden = true; },
        [](FltMesh& mesh) {
            mesh.colors = {1, 2};
        },
        [](FltMesh& mesh) { mesh.normals.pop_back(); },
        [](FltMesh& mesh) { mesh.uvs.clear(); },
        [](FltMesh& mesh) { mesh.layers[0].uvs.clear(); },
        [](FltMesh& mesh) { mesh.parts.resize(1); },
        [](FltMesh& mesh) { mesh = {}; },
        [](FltMesh& mesh) {
            mesh = {};
            mesh.texture = 1;
        },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        FltMesh mesh = triangle();
        changes[i](mesh);
        EXPECT_FALSE(FltMeshJoiner::mayJoin(mesh)) << i;
    }
    FltMesh point;
    point.kind = FltMesh::Kind::points;
    point.isLit = false;
    point.positions.resize(1);
    point.colors.resize(1);
    EXPECT_TRUE(FltMeshJoiner::mayJoin(point));
}

TEST(FltMeshJoiner, knowsWhatLooksAlike)
{
    std::vector<std::function<void(FltMesh&)>> const same = {
        [](FltMesh& mesh) { mesh.colors = {5}; },
        [](FltMesh& mesh) { mesh.material.ambient[1] -= 1e-5F; }, // a mean
        [](FltMesh& mesh) { mesh.origin[0] = 1; },
    };
    for (auto const& change : same) {
        FltMesh mesh = triangle();
        change(mesh);
        EXPECT_TRUE(FltMeshJoiner::lookAlike(triangle(), mesh));
        EXPECT_EQ(FltMeshJoiner::hashOf(triangle()), FltMeshJoiner::hashOf(mesh));
    }
    std::vector<std::function<void(FltMesh&)>> const other = {
        [](FltMesh& mesh) { mesh.kind = FltMesh::Kind::lines; },
        [](FltMesh& mesh) { mesh.isLit = false; },
        [](FltMesh& mesh) { mesh.isTwoSided = true; },
        [](FltMesh& mesh) { mesh.isCutOut = true; },
        [](FltMesh& mesh) { mesh.ignoresTextureAlpha = true; },
        [](FltMesh& mesh) { mesh.isOutlined = true; },
        [](FltMesh& mesh) { mesh.level = 1; },
        [](FltMesh& mesh) { mesh.size = 2; },
        [](FltMesh& mesh) { mesh.texture = 2; },
        [](FltMesh& mesh) { mesh.layers[0].number = 1; },
        [](FltMesh& mesh) { mesh.layers[0].texture = 1; },
        [](FltMesh& mesh) { mesh.layers.clear(); },
        [](FltMesh& mesh) { mesh.material.ambient[2] = 0.5F; },
        [](FltMesh& mesh) { mesh.material.specular[0] = 0.5F; },
        [](FltMesh& mesh) { mesh.material.emissive[0] = 0.5F; },
        [](FltMesh& mesh) { mesh.material.shininess = 0.5F; },
        [](FltMesh& mesh) { mesh.material.isFromPalette = true; },
    };
    for (std::size_t i = 0; i < other.size(); ++i) {
        FltMesh mesh = triangle();
        other[i](mesh);
        EXPECT_FALSE(FltMeshJoiner::lookAlike(triangle(), mesh)) << i;
    }
}
