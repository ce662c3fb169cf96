#include "model/FltVertexStore.h"

#include "records/FltOpcode.h"
#include "records/FltRecordVertex.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace
{

/// Offsets are looked up in runs of so many bytes.
constexpr int bucketBits = 5;

/// Bytes of a palette's head, which a palette without one is taken to have.
constexpr std::size_t paletteHeadSize = 8;

constexpr std::uint16_t noColorFlag = 0x2000;
constexpr std::uint16_t packedColorFlag = 0x1000;

template <class Record>
FltVertex vertexOf(FltRecordView const& record, FltColors const& colors, int revision)
{
    constexpr bool hasBoth = std::is_same_v<Record, FltRecordVertexColorNormalUv>;
    Record values(record.classLength());
    values.revision = revision;
    record.decodeFieldsTo(values);
    FltVertex vertex;
    vertex.position[0] = values.Xcoordinate;
    vertex.position[1] = values.Ycoordinate;
    vertex.position[2] = values.Zcoordinate;
    if constexpr (hasBoth || std::is_same_v<Record, FltRecordVertexColorNormal>)
        vertex.setNormal(values.vertexNormal);
    if constexpr (hasBoth || std::is_same_v<Record, FltRecordVertexColorUv>)
        vertex.setUv(values.texture);
    if ((values.flags & noColorFlag) != 0)
        return vertex;
    if ((values.flags & packedColorFlag) != 0)
        vertex.setColor(FltColors::fromPacked(values.packedColor));
    else if (record.holdsField(values, values.vertexColorIndex))
        vertex.setColor(colors.atIndex(values.vertexColorIndex));
    return vertex;
}

/// A vertex of the old forms may be longer than the form with texture coordinates, which it has then too.
template <class Record>
FltVertex oldVertexOf(FltRecordView const& record, [[maybe_unused]] FltColors const& colors)
{
    Record values(std::min(record.classLength(), Record::texturedLength));
    record.decodeFieldsTo(values);
    FltVertex vertex;
    vertex.position[0] = values.Xcoordinate;
    vertex.position[1] = values.Ycoordinate;
    vertex.position[2] = values.Zcoordinate;
    if constexpr (!std::is_same_v<Record, FltRecordOldVertex>)
        vertex.setColor(colors.atIndex(values.colorIndex));
    if constexpr (std::is_same_v<Record, FltRecordOldVertexColorNormal>)
        vertex.setNormal(values.vertexNormalScaled);
    if (values.hasTexture())
        vertex.setUv(values.texture);
    return vertex;
}

FltVertex paletteVertexOf(FltRecordView const& record, FltColors const& colors, int revision)
{
    switch (record.opcode) {
    case FltOpcode::vertexColorNormal:
        return vertexOf<FltRecordVertexColorNormal>(record, colors, revision);
    case FltOpcode::vertexColorNormalUv:
        return vertexOf<FltRecordVertexColorNormalUv>(record, colors, revision);
    case FltOpcode::vertexColorUv:
        return vertexOf<FltRecordVertexColorUv>(record, colors, revision);
    default:
        return vertexOf<FltRecordVertexColor>(record, colors, revision);
    }
}

} // namespace

void FltVertexStore::addPaletteVertex(FltRecordView const& record, FltColors const& colors, int revision)
{
    if (!hasPalette && paletteBegin == 0)
        paletteBegin = record.offset - std::min(record.offset, paletteHeadSize);
    hasPalette = true;
    std::size_t const offset = record.offset - paletteBegin;
    if (!starts.empty() && offset <= starts.back().offset)
        return; // a second palette: offsets go on meaning the first
    starts.push_back({static_cast<std::uint32_t>(offset), add(paletteVertexOf(record, colors, revision))});
    if (buckets.size() <= offset >> bucketBits)
        buckets.resize((offset >> bucketBits) + 1, static_cast<std::uint32_t>(starts.size() - 1));
}

std::uint32_t FltVertexStore::addOldVertex(FltRecordView const& record, FltColors const& colors)
{
    switch (record.opcode) {
    case FltOpcode::oldVertex:
        return add(oldVertexOf<FltRecordOldVertex>(record, colors));
    case FltOpcode::oldVertexColorNormal:
        return add(oldVertexOf<FltRecordOldVertexColorNormal>(record, colors));
    default:
        return add(oldVertexOf<FltRecordOldVertexColor>(record, colors));
    }
}

std::uint32_t FltVertexStore::add(FltVertex const& vertex)
{
    vertices.push_back(vertex);
    return static_cast<std::uint32_t>(vertices.size() - 1);
}

std::uint32_t FltVertexStore::find(std::int64_t offset) const
{
    if (offset < 0 || static_cast<std::size_t>(offset >> bucketBits) >= buckets.size())
        return none;
    for (std::size_t i = buckets[static_cast<std::size_t>(offset >> bucketBits)]; i < starts.size(); ++i)
        if (starts[i].offset >= offset)
            return starts[i].offset == offset ? starts[i].number : none;
    return none;
}
