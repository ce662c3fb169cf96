#pragma once

#include "model/FltColors.h"
#include "model/FltPaletteOffsets.h"
#include "model/FltRecordPlaces.h"
#include "model/FltVertex.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

/// All vertices of one file: those of its vertex palette, which faces name by their byte offset, and those
/// that stand in faces and meshes themselves.
///
/// Of those of the palette only the places of their records are kept, and each is decoded when it is asked
/// for. The others, and what follows them or a change of colours, are kept decoded.
class FltVertexStore
{
public:
    static constexpr std::uint32_t none = FltPaletteOffsets::none;

    /// Starts the vertex palette: offsets count from here on.
    void beginPalette(FltRecordView const& head) { offsets.beginPalette(head); }

    /// Adds a vertex record of the palette, whose bytes have to outlive the store.
    void addPaletteVertex(FltRecordView const& record, std::shared_ptr<FltColors> const& colors,
                          int revision);

    /// Adds a vertex of the old forms, which stands below its face. @return its number
    std::uint32_t addOldVertex(FltRecordView const& record, FltColors const& colors);

    /// Adds a vertex. @return its number
    std::uint32_t add(FltVertex const& vertex);

    /// Forgets all vertices but so many that were added first.
    void keepFirst(std::size_t count);

    /// The number of the vertex that begins at an offset of the palette; none if no vertex does.
    std::uint32_t find(std::int64_t offset) const { return offsets.find(offset); }

    /// The offset in the file after the last byte of it that vertices are decoded from.
    std::size_t endInFile() const;

    FltVertex operator[](std::uint32_t number) const
    {
        return number < stored.size() ? decoded(number) : vertices[number - stored.size()];
    }
    std::size_t size() const { return stored.size() + vertices.size(); }

    /// The coordinates alone, which take less time.
    std::array<double, 3> placeOf(std::uint32_t number) const;

    /// FltVertex::hasUsablePlace() of a vertex.
    bool hasUsablePlace(std::uint32_t number) const
    {
        std::array<double, 3> const place = placeOf(number);
        return FltVertex::isUsable(place[0], place[1], place[2]);
    }

private:
    FltVertex decoded(std::uint32_t number) const;
    void keepDecoded();

    FltRecordPlaces stored;            ///< Of the palette, from its begin on.
    std::shared_ptr<FltColors> colors; ///< Those of what is stored.
    int revision = 0;                  ///< That of what is stored.
    std::vector<FltVertex> vertices;   ///< Those behind.
    FltPaletteOffsets offsets;
};
