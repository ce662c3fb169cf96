#include "visual/FltMeshIndices.h"

#include <algorithm>

namespace
{

/// Calls a function with the corners of each face or line: the first, and the one after the last.
template <class Take>
void forEachShape(std::vector<std::int32_t> const& indices, Take take)
{
    auto first = indices.begin();
    while (first != indices.end()) {
        auto const last = std::find(first, indices.end(), FltMesh::end);
        take(first, last);
        first = last != indices.end() ? last + 1 : last;
    }
}

} // namespace

std::vector<std::uint32_t> FltMeshIndices::triangles(FltMesh const& mesh)
{
    std::vector<std::uint32_t> corners;
    if (mesh.kind != FltMesh::Kind::faces)
        return corners;
    corners.reserve(mesh.indices.size());
    forEachShape(mesh.indices, [&corners](auto first, auto last) {
        for (auto at = first + std::min<std::ptrdiff_t>(2, last - first); at != last; ++at)
            for (std::int32_t const corner : {*first, at[-1], *at})
                corners.push_back(static_cast<std::uint32_t>(corner));
    });
    return corners;
}

std::vector<std::uint32_t> FltMeshIndices::lines(FltMesh const& mesh)
{
    std::vector<std::uint32_t> ends;
    if (mesh.kind != FltMesh::Kind::lines)
        return ends;
    ends.reserve(2 * mesh.indices.size());
    forEachShape(mesh.indices, [&ends](auto first, auto last) {
        for (auto at = first + std::min<std::ptrdiff_t>(1, last - first); at != last; ++at)
            for (std::int32_t const end : {at[-1], *at})
                ends.push_back(static_cast<std::uint32_t>(end));
    });
    return ends;
}
