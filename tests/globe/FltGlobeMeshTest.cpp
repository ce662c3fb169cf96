#include "globe/FltGlobeMesh.h"

#include <cmath>
#include <gtest/gtest.h>

namespace
{

/// Meshes on the flat earth about 48 N 9 E.
class FltGlobeMeshTest : public testing::Test
{
protected:
    FltGlobeMeshTest() { map.moveTo({0, 0, 0}); }

    static FltVisual visualAt(double latitude, double longitude)
    {
        FltVisual made;
        made.info.originLatitude = latitude;
        made.info.originLongitude = longitude;
        return made;
    }

    /// A triangle with corners at these distances to the east.
    static FltMesh triangleAt(std::vector<double> const& distances)
    {
        FltMesh mesh;
        mesh.origin = {std::floor(distances.front()), 0, 0};
        for (double const distance : distances)
            mesh.positions.push_back(SbVec3f(SbVec3d(distance, 0, 0) - mesh.origin));
        mesh.normals.assign(3, SbVec3f(0, 0, 1));
        mesh.indices = {0, 1, 2, FltMesh::end};
        mesh.colors = {~0U};
        return mesh;
    }

    FltMesh placed(FltMesh const& mesh) { return meshes.placed(mesh, SbDPMatrix::identity()); }

    FltVisual const visual = visualAt(48, 9);
    FltProjection const projection{visual.info};
    FltGlobeMap map{visual, projection};
    FltGlobeMesh meshes{map};
};

bool isNumber(SbVec3f const& place)
{
    return std::isfinite(place[0]) && std::isfinite(place[1]) && std::isfinite(place[2]);
}

} // namespace

TEST_F(FltGlobeMeshTest, countsFromAPlaceNearItsCornersSoThatFloatsTellMillimetres)
{
    std::vector<double> const distances = {180000.015625, 180001.375, 180003.25};
    FltMesh const mesh = placed(triangleAt(distances));
    for (std::size_t i = 0; i < distances.size(); ++i) {
        SbVec3d const place = map.placeOf({distances[i], 0, 0}).value();
        EXPECT_LT((mesh.origin + SbVec3d(mesh.positions[i]) - place).length(), 1e-4) << i;
    }
}

TEST_F(FltGlobeMeshTest, countsFromThePlacesThatItsOtherCornersHave)
{
    FltMesh const mesh = placed(triangleAt({180000, 1e9, 180003}));
    EXPECT_EQ(meshes.lost(), 1U);
    EXPECT_FALSE(isNumber(mesh.positions[1]));
    EXPECT_LT((mesh.origin + SbVec3d(mesh.positions[0]) - map.placeOf({180000, 0, 0}).value()).length(),
              1e-4);
}

TEST_F(FltGlobeMeshTest, countsFromZeroWhereNoCornerHasAPlace)
{
    FltMesh const mesh = placed(triangleAt({1e9, 2e9, 3e9}));
    EXPECT_EQ(meshes.lost(), 3U);
    EXPECT_EQ(mesh.origin, SbVec3d(0, 0, 0));
    for (SbVec3f const& position : mesh.positions)
        EXPECT_FALSE(isNumber(position));
}
