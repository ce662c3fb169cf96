#pragma once

#include "model/FltRecordView.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Where the vertices of a vertex palette begin: faces name them by their byte offset from its head on.
class FltPaletteOffsets
{
public:
    static constexpr std::uint32_t none = ~0U;

    /// Starts the palette: offsets count from here on.
    void beginPalette(FltRecordView const& head) { begin = head.offset; }

    /// Makes room for so many vertices.
    void reserve(std::size_t count) { starts.reserve(count); }

    /// Adds a vertex of the palette, whose record begins at an offset of the file.
    /// @return false, and it isn't added, if it is one of a second palette: offsets go on meaning the first
    bool add(std::size_t recordOffset, std::uint32_t number);

    /// The number of the vertex that begins at an offset of the palette; none if no vertex does.
    std::uint32_t find(std::int64_t offset) const;

private:
    struct Start {
        std::uint32_t offset;
        std::uint32_t number;
    };

    std::vector<Start> starts;          ///< By ascending offset.
    std::vector<std::uint32_t> buckets; ///< For each run of offsets, the first start in or after it.
    std::size_t begin = 0;
    bool hasVertices = false;
};
