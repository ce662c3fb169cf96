#include "gltf/GltfCorners.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

constexpr float noNumber = std::numeric_limits<float>::quiet_NaN();
constexpr std::int32_t end = FltMesh::end;

/// Two triangles with an edge in common, of which each has corners of its own.
FltMesh twoTriangles()
{
    FltMesh mesh;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    mesh.normals.assign(6, SbVec3f(0, 0, 1));
    mesh.uvs = {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}};
    mesh.colors = {~0U};
    mesh.indices = {0, 1, 2, end, 3, 4, 5, end};
    return mesh;
}

/// Triangles of which each lies far from the one before.
FltMesh scattered(int count)
{
    FltMesh mesh;
    for (int i = 0; i < count; ++i) {
        int const at = i * 37 % 60;
        for (int corner = 0; corner < 3; ++corner) {
            float const height = corner == 2 ? 1 : 0;
            mesh.positions.emplace_back(static_cast<float>(at + corner % 2), height, 0.0F);
            mesh.indices.push_back(3 * i + corner);
        }
        mesh.indices.push_back(end);
    }
    mesh.colors = {~0U};
    mesh.isLit = false;
    return mesh;
}

/// How many triangles stand where they stood in the mesh.
std::size_t placesIn(FltMesh const& mesh)
{
    GltfCorners const corners(mesh, {}, false);
    std::size_t count = 0;
    for (std::size_t i = 0; i < corners.indices.size(); i += 3)
        count += corners.positions[corners.indices[i]] == mesh.positions[i] ? 1 : 0;
    return count;
}

} // namespace

TEST(GltfCorners, AreThereOnce)
{
    GltfCorners const corners(twoTriangles(), {}, true);
    EXPECT_EQ(corners.positions.size(), 4U);
    EXPECT_EQ(corners.normals.size(), 4U);
    EXPECT_EQ(corners.uvs.size(), 4U);
    EXPECT_TRUE(corners.colors.empty()) << "the material has it";
    EXPECT_EQ(corners.indices.size(), 6U);
}

TEST(GltfCorners, StayApartWhereTheyLookDifferent)
{
    FltMesh mesh = twoTriangles();
    mesh.colors = {1, 1, 1, 2, 2, 2};
    EXPECT_EQ(GltfCorners(mesh, {}, true).positions.size(), 6U);
    mesh = twoTriangles();
    mesh.uvs[3] = SbVec2f(5, 5);
    EXPECT_EQ(GltfCorners(mesh, {}, true).positions.size(), 5U);
    EXPECT_EQ(GltfCorners(mesh, {}, false).positions.size(), 4U) << "nobody sees the difference";
}

TEST(GltfCorners, TakeZerosOfBothSignsForOne)
{
    FltMesh mesh = twoTriangles();
    mesh.positions[3] = SbVec3f(-0.0F, 0, -0.0F);
    EXPECT_EQ(GltfCorners(mesh, {}, true).positions.size(), 4U);
}

TEST(GltfCorners, HaveTheirPictureFromAbove)
{
    GltfCorners const corners(twoTriangles(), {}, true);
    for (std::size_t i = 0; i < corners.uvs.size(); ++i)
        EXPECT_EQ(corners.uvs[i][1], 1 - corners.positions[i][1]);
}

TEST(GltfCorners, AreLeftOutWhereTheirPlacesAreNoNumbers)
{
    FltMesh mesh = twoTriangles();
    mesh.positions[5][1] = noNumber;
    GltfCorners const corners(mesh, {}, true);
    EXPECT_EQ(corners.indices.size(), 3U);
    EXPECT_EQ(corners.lost, 1U);
    mesh.positions[0][0] = std::numeric_limits<float>::infinity();
    GltfCorners const none(mesh, {}, true);
    EXPECT_TRUE(none.indices.empty());
    EXPECT_EQ(none.lost, 2U);
}

TEST(GltfCorners, OfPointsAreLeftOutOneByOne)
{
    FltMesh mesh = twoTriangles();
    mesh.kind = FltMesh::Kind::points;
    mesh.indices.clear();
    for (std::size_t const lost : {0U, 3U, 5U}) {
        FltMesh some = mesh;
        some.positions[lost][1] = noNumber;
        GltfCorners const corners(some, {}, false);
        EXPECT_EQ(corners.indices.size(), 5U) << lost;
        EXPECT_EQ(corners.lost, 1U) << lost;
    }
}

TEST(GltfCorners, HaveNormalsOfLengthOneAndCoordinatesOfNumbers)
{
    FltMesh mesh = twoTriangles();
    mesh.normals = {{0, 0, 2}, {noNumber, 0, 0}, {0, 0, 0}, {3, 4, 0}, {0, 0, 1}, {1e30F, 0, 0}};
    mesh.uvs[0] = SbVec2f(noNumber, 1);
    GltfCorners const corners(mesh, {}, true);
    for (SbVec3f const& normal : corners.normals)
        EXPECT_NEAR(normal.length(), 1, 1e-5F);
    for (SbVec2f const& uv : corners.uvs)
        EXPECT_TRUE(uv[0] >= 0 && uv[0] <= 1 && uv[1] >= 0 && uv[1] <= 1) << uv[0] << ' ' << uv[1];
}

TEST(GltfCorners, OfUnlitMeshesHaveNoNormals)
{
    FltMesh mesh = twoTriangles();
    mesh.isLit = false;
    EXPECT_TRUE(GltfCorners(mesh, {}, true).normals.empty());
}

TEST(GltfCorners, MakeLinesAndPoints)
{
    FltMesh mesh = twoTriangles();
    mesh.kind = FltMesh::Kind::lines;
    mesh.normals.clear();
    mesh.indices = {0, 1, 2, end, 3, 5, end};
    GltfCorners const lines(mesh, {}, false);
    EXPECT_EQ(lines.cornersOfAShape, 2U);
    EXPECT_EQ(lines.indices.size(), 6U);
    mesh.kind = FltMesh::Kind::points;
    mesh.indices.clear();
    GltfCorners const points(mesh, {}, false);
    EXPECT_EQ(points.positions.size(), 6U) << "each point is drawn as often as it is there";
    EXPECT_EQ(points.indices.size(), 6U);
}

TEST(GltfCorners, AreMovedInDoubles)
{
    FltMesh mesh = twoTriangles();
    GltfCornerForm form;
    form.way = SbVec3d(0.1, 0, -2);
    GltfCorners const corners(mesh, form, false);
    for (SbVec3f const& position : corners.positions) {
        EXPECT_TRUE(position[0] == 0.1F || position[0] == 1.1F) << position[0];
        EXPECT_EQ(position[2], -2);
    }
}

/// What a matrix flattens looks along what it flattens.
TEST(GltfCorners, TakeAMatrixInWithTheirNormals)
{
    FltMesh mesh = twoTriangles();
    mesh.normals.assign(6, SbVec3f(0.6F, 0, 0.8F));
    SbDPMatrix flat = SbDPMatrix::identity();
    flat[0][0] = 2;
    flat[2][2] = 0;
    GltfCornerForm form;
    form.way = SbVec3d(0, 0, 5);
    form.workedIn = &flat;
    GltfCorners const corners(mesh, form, false);
    for (SbVec3f const& position : corners.positions)
        EXPECT_TRUE(position[0] == 0 || position[0] == 2) << position[0];
    for (SbVec3f const& normal : corners.normals)
        EXPECT_EQ(normal, SbVec3f(0, 0, 1));
}

TEST(GltfCorners, KeepTheOrderOfWhatIsBlended)
{
    FltMesh mesh = scattered(60);
    mesh.isBlended = true;
    EXPECT_EQ(placesIn(mesh), 60U);
}

TEST(GltfCorners, KeepTheOrderOfTrianglesTooFewToMatter)
{
    EXPECT_EQ(placesIn(scattered(16)), 16U);
    EXPECT_LT(placesIn(scattered(17)), 17U);
}
