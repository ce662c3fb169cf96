#include "vrml/FltOpacityParts.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace
{

constexpr std::uint32_t opacityBits = 0xff;

/// A face, a line or a point, by its place in what lists them: indices, or corners for points.
struct Piece {
    std::size_t first;
    std::size_t count; ///< Corners.
};

std::size_t cornerAt(FltMesh const& mesh, std::size_t place)
{
    return mesh.kind == FltMesh::Kind::points ? place : static_cast<std::size_t>(mesh.indices[place]);
}

std::vector<Piece> piecesOf(FltMesh const& mesh)
{
    std::vector<Piece> pieces;
    if (mesh.kind == FltMesh::Kind::points) {
        for (std::size_t i = 0; i < mesh.positions.size(); ++i)
            pieces.push_back({i, 1});
        return pieces;
    }
    std::size_t first = 0;
    for (std::size_t i = 0; i < mesh.indices.size(); ++i)
        if (mesh.indices[i] == FltMesh::end) {
            pieces.push_back({first, i - first});
            first = i + 1;
        }
    return pieces;
}

template <class Value>
void take(std::vector<Value>& to, std::vector<Value> const& from, std::size_t corner)
{
    if (!from.empty())
        to.push_back(from[corner]);
}

/// Takes pieces of a mesh over, with a copy of each corner that they use.
class Part
{
public:
    Part(FltMesh const& whole, std::uint32_t opacity) : whole(whole), opacity(opacity)
    {
        mesh = whole;
        mesh.positions.clear();
        mesh.normals.clear();
        mesh.uvs.clear();
        mesh.colors.clear();
        mesh.indices.clear();
        mesh.layers.clear();
    }

    /// @param numbers of the corners in this part, or an end
    void add(Piece const& piece, std::vector<std::int32_t>& numbers)
    {
        for (std::size_t i = 0; i < piece.count; ++i) {
            std::int32_t& number = numbers[cornerAt(whole, piece.first + i)];
            if (number == FltMesh::end)
                number = addCorner(cornerAt(whole, piece.first + i));
            if (mesh.kind != FltMesh::Kind::points)
                mesh.indices.push_back(number);
        }
        if (mesh.kind != FltMesh::Kind::points)
            mesh.indices.push_back(FltMesh::end);
    }

    FltMesh mesh;

private:
    std::int32_t addCorner(std::size_t corner)
    {
        take(mesh.positions, whole.positions, corner);
        take(mesh.normals, whole.normals, corner);
        take(mesh.uvs, whole.uvs, corner);
        mesh.colors.push_back((whole.colors[corner] & ~opacityBits) | opacity);
        return static_cast<std::int32_t>(mesh.positions.size() - 1);
    }

    FltMesh const& whole;
    std::uint32_t opacity;
};

void joinEqualColors(FltMesh& mesh)
{
    auto const differs = [&mesh](std::uint32_t color) { return color != mesh.colors.front(); };
    if (std::none_of(mesh.colors.begin(), mesh.colors.end(), differs))
        mesh.colors.resize(std::min<std::size_t>(mesh.colors.size(), 1));
}

} // namespace

FltOpacityParts::FltOpacityParts(FltMesh mesh)
{
    auto const differs = [&mesh](std::uint32_t color) {
        return ((color ^ mesh.colors.front()) & opacityBits) != 0;
    };
    if (std::none_of(mesh.colors.begin(), mesh.colors.end(), differs)) {
        parts.push_back(std::move(mesh));
        return;
    }
    std::map<std::uint32_t, std::vector<Piece>, std::greater<>> pieces;
    for (Piece const& piece : piecesOf(mesh)) {
        if (piece.count == 0)
            continue;
        std::size_t sum = 0;
        std::uint32_t const first = mesh.colors[cornerAt(mesh, piece.first)] & opacityBits;
        bool isEven = true;
        for (std::size_t i = 0; i < piece.count; ++i) {
            std::uint32_t const opacity = mesh.colors[cornerAt(mesh, piece.first + i)] & opacityBits;
            sum += opacity;
            isEven = isEven && opacity == first;
        }
        levelledOut += isEven ? 0 : 1;
        pieces[static_cast<std::uint32_t>(sum / piece.count)].push_back(piece);
    }
    std::vector<std::int32_t> numbers(mesh.positions.size(), FltMesh::end);
    for (auto const& [opacity, ofPart] : pieces) {
        Part part(mesh, opacity);
        for (Piece const& piece : ofPart)
            part.add(piece, numbers);
        for (Piece const& piece : ofPart) // for the next part
            for (std::size_t i = 0; i < piece.count; ++i)
                numbers[cornerAt(mesh, piece.first + i)] = FltMesh::end;
        joinEqualColors(part.mesh);
        parts.push_back(std::move(part.mesh));
    }
}
