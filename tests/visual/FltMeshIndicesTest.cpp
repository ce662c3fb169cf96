#include "visual/FltMeshIndices.h"

#include <gtest/gtest.h>

namespace
{

using Numbers = std::vector<std::uint32_t>;

FltMesh meshOf(FltMesh::Kind kind, std::vector<std::int32_t> indices)
{
    FltMesh mesh;
    mesh.kind = kind;
    mesh.indices = std::move(indices);
    return mesh;
}

TEST(FltMeshIndices, cutsFacesIntoFans)
{
    FltMesh const mesh = meshOf(FltMesh::Kind::faces, {0, 1, 2, -1, 3, 4, 5, 6, 7, -1});
    EXPECT_EQ(FltMeshIndices::triangles(mesh), (Numbers{0, 1, 2, 3, 4, 5, 3, 5, 6, 3, 6, 7}));
    EXPECT_TRUE(FltMeshIndices::lines(mesh).empty());
}

TEST(FltMeshIndices, cutsLinesIntoPieces)
{
    FltMesh const mesh = meshOf(FltMesh::Kind::lines, {0, 1, 2, -1, 3, 4, -1});
    EXPECT_EQ(FltMeshIndices::lines(mesh), (Numbers{0, 1, 1, 2, 3, 4}));
    EXPECT_TRUE(FltMeshIndices::triangles(mesh).empty());
}

TEST(FltMeshIndices, takesNothingFromShapesThatAreTooShort)
{
    EXPECT_TRUE(FltMeshIndices::triangles(meshOf(FltMesh::Kind::faces, {-1, 0, -1, 1, 2, -1})).empty());
    EXPECT_TRUE(FltMeshIndices::lines(meshOf(FltMesh::Kind::lines, {-1, 0, -1})).empty());
}

TEST(FltMeshIndices, takesTheLastShapeWithoutAnEnd)
{
    EXPECT_EQ(FltMeshIndices::triangles(meshOf(FltMesh::Kind::faces, {0, 1, 2})), (Numbers{0, 1, 2}));
    EXPECT_EQ(FltMeshIndices::lines(meshOf(FltMesh::Kind::lines, {0, 1})), (Numbers{0, 1}));
}

} // namespace
