#pragma once

#include "model/FltVertexStore.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

/// Finds faces that show the same side in the same place. Each face is looked at once: the work is in
/// proportion to the corners.
class FltCoincidingFaces
{
public:
    /// What faces have in common that are drawn over one another.
    struct Layer {
        std::uint32_t scope = 0;
        int level = 0;    ///< How many faces it lies on.
        int priority = 0; ///< Of the face.
    };

    explicit FltCoincidingFaces(FltVertexStore const& vertices) : vertices(vertices) {}

    /// Adds a face.
    /// @param offset  of its record
    /// @param corners numbers of its vertices, three or more
    /// @return the offset of an earlier face of the layer that shows the same side in the same place; none if
    ///         there is none
    std::optional<std::uint64_t> add(Layer const& layer, std::uint64_t offset,
                                     std::vector<std::uint32_t> const& corners, bool isTwoSided);

private:
    /// A side of a face, from its least corner on.
    struct Side {
        Layer layer;
        std::uint32_t count;
        std::uint64_t offset;
        std::size_t begin;   ///< In kept.
        std::uint32_t least; ///< From begin on.
        bool isBack;

        std::size_t place(std::size_t i) const
        {
            return begin + (isBack ? least + count - i : least + i) % count;
        }
    };

    std::array<double, 3> positionAt(std::size_t place) const { return vertices.placeOf(kept[place]); }
    std::uint32_t findLeast(std::size_t begin, std::uint32_t count) const;
    std::optional<std::uint64_t> addSide(Side const& side);
    std::uint64_t hashOf(Side const& side) const;
    bool isSame(Side const& left, Side const& right) const;

    FltVertexStore const& vertices;
    std::vector<std::uint32_t> kept; ///< Corners of all faces.
    std::unordered_map<std::uint64_t, Side> sides;
};
