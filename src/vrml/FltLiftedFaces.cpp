#include "vrml/FltLiftedFaces.h"

#include <Inventor/SbBox3f.h>
#include <algorithm>
#include <cstddef>

namespace
{

/// Of the size of a mesh, and so large that readers tell the faces apart when they show it as a whole.
constexpr double partOfSize = 1.0 / 5000;

/// So little that nobody sees the gap from nearby.
constexpr double mostMetres = 0.05;

double sizeOf(std::vector<SbVec3f> const& positions)
{
    SbBox3f box;
    for (SbVec3f const& position : positions)
        box.extendBy(position);
    return box.isEmpty() ? 0 : static_cast<double>((box.getMax() - box.getMin()).length());
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

std::vector<SbVec3f> FltLiftedFaces::positions(FltMesh const& mesh, double metresPerUnit)
{
    double const level = mesh.level - (mesh.isOutlined ? 0.5 : 0.0);
    if (mesh.kind != FltMesh::Kind::faces || level == 0)
        return mesh.positions;
    double const lift = level * std::min(mostMetres / metresPerUnit, sizeOf(mesh.positions) * partOfSize);
    std::vector<SbVec3f> lifted = mesh.positions;
    std::vector<SbVec3f> directions = directionsOf(mesh);
    for (std::size_t i = 0; i < lifted.size(); ++i) {
        directions[i].normalize();
        lifted[i] += directions[i] * static_cast<float>(lift);
    }
    return lifted;
}
