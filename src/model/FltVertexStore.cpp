#include "model/FltVertexStore.h"

#include "records/FltOpcode.h"

namespace
{

/// Offsets are looked up in runs of so many bytes.
constexpr int bucketBits = 5;

/// Bytes of a palette's head, which a palette without one is taken to have.
constexpr std::size_t paletteHeadSize = 8;

constexpr std::uint16_t noColorFlag = 0x2000;
constexpr std::uint16_t packedColorFlag = 0x1000;

constexpr int firstRevisionWithColorIndex = 1540;

void readColor(FltVertex& vertex, FltRecordView const& record, std::size_t at, FltColors const& colors,
               int revision)
{
    unsigned const flags = record.word16At(6);
    if ((flags & noColorFlag) != 0)
        return;
    if ((flags & packedColorFlag) != 0)
        vertex.color = FltColors::fromPacked(record.word32At(at));
    else if (revision >= firstRevisionWithColorIndex && record.holds(at + 4, 4))
        vertex.color = colors.atIndex(record.int32At(at + 4));
    else
        return;
    vertex.flags |= FltVertex::hasColor;
}

std::size_t readNormal(FltVertex& vertex, FltRecordView const& record, std::size_t at)
{
    for (int i = 0; i < 3; ++i)
        vertex.normal[i] = record.floatAt(at + 4 * i);
    vertex.flags |= FltVertex::hasNormal;
    return at + 12;
}

std::size_t readUv(FltVertex& vertex, FltRecordView const& record, std::size_t at)
{
    for (int i = 0; i < 2; ++i)
        vertex.uv[i] = record.floatAt(at + 4 * i);
    vertex.flags |= FltVertex::hasUv;
    return at + 8;
}

} // namespace

void FltVertexStore::addPaletteVertex(FltRecordView const& record, FltColors const& colors, int revision)
{
    FltVertex vertex;
    for (int i = 0; i < 3; ++i)
        vertex.position[i] = record.doubleAt(8 + 8 * i);
    std::size_t at = 32;
    if (record.opcode == FltOpcode::vertexColorNormal || record.opcode == FltOpcode::vertexColorNormalUv)
        at = readNormal(vertex, record, at);
    if (record.opcode == FltOpcode::vertexColorUv || record.opcode == FltOpcode::vertexColorNormalUv)
        at = readUv(vertex, record, at);
    readColor(vertex, record, at, colors, revision);

    if (!hasPalette && paletteBegin == 0)
        paletteBegin = record.offset - std::min(record.offset, paletteHeadSize);
    hasPalette = true;
    std::size_t const offset = record.offset - paletteBegin;
    if (!starts.empty() && offset <= starts.back().offset)
        return; // a second palette: offsets go on meaning the first
    starts.push_back({static_cast<std::uint32_t>(offset), add(vertex)});
    if (buckets.size() <= offset >> bucketBits)
        buckets.resize((offset >> bucketBits) + 1, static_cast<std::uint32_t>(starts.size() - 1));
}

std::uint32_t FltVertexStore::addOldVertex(FltRecordView const& record, FltColors const& colors)
{
    FltVertex vertex;
    for (int i = 0; i < 3; ++i)
        vertex.position[i] = record.int32At(4 + 4 * i);
    std::size_t at = 16;
    if (record.opcode != FltOpcode::oldVertex) {
        vertex.color = colors.atIndex(record.word16At(18));
        vertex.flags |= FltVertex::hasColor;
        at = 20;
    }
    if (record.opcode == FltOpcode::oldVertexColorNormal)
        at = readNormal(vertex, record, at);
    if (record.holds(at, 8))
        readUv(vertex, record, at);
    return add(vertex);
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
