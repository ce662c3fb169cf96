#include "globe/FltGlobeMesh.h"

#include "visual/FltLocalOrigin.h"

#include <Inventor/SbBox3d.h>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace
{

SbVec3d rowOf(SbDPMatrix const& matrix, int row)
{
    return {matrix[row][0], matrix[row][1], matrix[row][2]};
}

/// What a matrix does to what stands upright on faces, but for lengths.
SbVec3d turnedNormal(SbVec3d const& normal, SbDPMatrix const& matrix)
{
    SbVec3d const x = rowOf(matrix, 0), y = rowOf(matrix, 1), z = rowOf(matrix, 2);
    SbVec3d const turned = y.cross(z) * normal[0] + z.cross(x) * normal[1] + x.cross(y) * normal[2];
    return matrix.det3() < 0 ? -turned : turned;
}

/// Turns the corners of each face round.
void turnRound(std::vector<std::int32_t>& indices)
{
    for (auto begin = indices.begin(); begin != indices.end();) {
        auto const end = std::find(begin, indices.end(), FltMesh::end);
        std::reverse(begin, end);
        begin = end == indices.end() ? end : end + 1;
    }
}

/// What places count from, by those that are numbers.
SbVec3d originOf(std::vector<SbVec3d> const& places)
{
    std::vector<SbVec3d> known;
    known.reserve(places.size());
    std::copy_if(places.begin(), places.end(), std::back_inserter(known),
                 [](SbVec3d const& place) { return std::isfinite(place[0]); });
    return known.empty() ? SbVec3d(0, 0, 0) : FltLocalOrigin::of(known, 1);
}

} // namespace

FltMesh FltGlobeMesh::placed(FltMesh const& mesh, SbDPMatrix const& around)
{
    FltMesh result = mesh;
    placeCorners(mesh, around, result);
    turnNormals(mesh, around, result);
    if (mesh.kind == FltMesh::Kind::faces && around.det3() < 0)
        turnRound(result.indices);
    return result;
}

void FltGlobeMesh::placeCorners(FltMesh const& from, SbDPMatrix const& around, FltMesh& mesh)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    placedOnes.clear();
    placedOnes.reserve(from.positions.size());
    for (SbVec3f const& position : from.positions) {
        SbVec3d point;
        around.multVecMatrix(from.origin + SbVec3d(position), point);
        std::optional<SbVec3d> const place = map.placeOf(point);
        lostCorners += place ? 0 : 1;
        placedOnes.push_back(place.value_or(SbVec3d(none, none, none)));
    }
    mesh.origin = originOf(placedOnes);
    for (std::size_t i = 0; i < placedOnes.size(); ++i)
        mesh.positions[i] = SbVec3f(placedOnes[i] - mesh.origin);
}

void FltGlobeMesh::turnNormals(FltMesh const& from, SbDPMatrix const& around, FltMesh& mesh)
{
    std::size_t const count = std::min(from.normals.size(), from.positions.size());
    for (std::size_t i = 0; i < count; ++i) {
        SbVec3d point;
        around.multVecMatrix(from.origin + SbVec3d(from.positions[i]), point);
        SbDPMatrix whole = around;
        whole.multRight(turnNear(point));
        SbVec3d normal = turnedNormal(SbVec3d(from.normals[i]), whole);
        if (normal.normalize() > 0)
            mesh.normals[i] = SbVec3f(normal);
    }
}

/// What the map does near a point. It changes slowly.
SbDPMatrix const& FltGlobeMesh::turnNear(SbVec3d const& point)
{
    if (turn && map.areNear(point, turnPoint))
        return *turn;
    turnPoint = point;
    turn = map.turnAt(point).value_or(SbDPMatrix::identity());
    return *turn;
}
