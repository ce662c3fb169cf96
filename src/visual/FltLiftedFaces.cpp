#include "visual/FltLiftedFaces.h"

#include <algorithm>
#include <cstddef>

namespace
{

double levelOf(FltMesh const& mesh)
{
    return mesh.level - (mesh.isOutlined ? 0.5 : 0.0);
}

/// The directions in which the faces at each corner look, added up.
std::vector<SbVec3f> directionsOf(FltMesh const& mesh)
{
    std::vector<SbVec3f> directions(mesh.positions.size(), SbVec3f(0, 0, 0));
    auto const position = [&mesh](std::int32_t corner) {
        return mesh.positions[static_cast<std::size_t>(corner)];
    };
    for (auto first = mesh.indices.begin(); first != mesh.indices.end();) {
        auto const last = std::find(first, mesh.indices.end(), FltMesh::end);
        SbVec3f direction(0, 0, 0);
        for (auto at = first + std::min<std::ptrdiff_t>(2, last - first); at < last; ++at)
            direction += (position(at[-1]) - position(*first)).cross(position(*at) - position(*first));
        direction.normalize();
        for (auto at = first; at != last; ++at)
            directions[static_cast<std::size_t>(*at)] += direction;
        first = last != mesh.indices.end() ? last + 1 : last;
    }
    return directions;
}

} // namespace

double FltLiftedFaces::liftOfALevel(double extent, double partOfExtent, double metresPerUnit)
{
    constexpr double mostMetres = 0.05;
    return std::min(mostMetres / metresPerUnit, extent * partOfExtent);
}

bool FltLiftedFaces::areLifted(FltMesh const& mesh)
{
    return mesh.kind == FltMesh::Kind::faces && levelOf(mesh) != 0;
}

std::vector<SbVec3f> FltLiftedFaces::positions(FltMesh const& mesh, double liftOfALevel)
{
    if (!areLifted(mesh))
        return mesh.positions;
    double const lift = levelOf(mesh) * liftOfALevel;
    std::vector<SbVec3f> lifted = mesh.positions;
    std::vector<SbVec3f> directions = directionsOf(mesh);
    for (std::size_t i = 0; i < lifted.size(); ++i) {
        directions[i].normalize();
        lifted[i] += directions[i] * static_cast<float>(lift);
    }
    return lifted;
}
