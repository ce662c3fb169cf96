#pragma once

#include "model/FltColors.h"
#include "model/FltPaletteOffsets.h"
#include "model/FltRecordView.h"
#include "model/FltVertex.h"

#include <cstdint>
#include <vector>

/// All vertices of one file: those of its vertex palette, which faces name by their byte offset, and those
/// that stand in faces and meshes themselves.
class FltVertexStore
{
public:
    static constexpr std::uint32_t none = FltPaletteOffsets::none;

    /// Starts the vertex palette: offsets count from here on.
    void beginPalette(FltRecordView const& head) { offsets.beginPalette(head); }

    /// Adds a vertex record of the palette.
    void addPaletteVertex(FltRecordView const& record, FltColors const& colors, int revision);

    /// Adds a vertex of the old forms, which stands below its face. @return its number
    std::uint32_t addOldVertex(FltRecordView const& record, FltColors const& colors);

    /// Adds a vertex. @return its number
    std::uint32_t add(FltVertex const& vertex);

    /// The number of the vertex that begins at an offset of the palette; none if no vertex does.
    std::uint32_t find(std::int64_t offset) const { return offsets.find(offset); }

    FltVertex const& operator[](std::uint32_t number) const { return vertices[number]; }
    std::size_t size() const { return vertices.size(); }

private:
    std::vector<FltVertex> vertices;
    FltPaletteOffsets offsets;
};
