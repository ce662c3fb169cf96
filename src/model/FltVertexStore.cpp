#include "model/FltVertexStore.h"

#include "records/FltOpcode.h"
#include "records/FltRecordVertex.h"

#include <algorithm>
#include <type_traits>

namespace
{

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
    if (offsets.add(record.offset, static_cast<std::uint32_t>(vertices.size())))
        add(paletteVertexOf(record, colors, revision));
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
