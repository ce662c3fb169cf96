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

/// Where all forms of the palette have their coordinates.
struct Coordinates {
    FltRecordVertexColor const form{0};
    std::size_t const x = FltFields::endOf(form, &form.Xcoordinate) - sizeof(double);
    std::size_t const y = FltFields::endOf(form, &form.Ycoordinate) - sizeof(double);
    std::size_t const z = FltFields::endOf(form, &form.Zcoordinate) - sizeof(double);
};

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

void FltVertexStore::addPaletteVertex(FltRecordView const& record, std::shared_ptr<FltColors> const& colors,
                                      int revision)
{
    if (!offsets.add(record.offset, static_cast<std::uint32_t>(size())))
        return;
    if (size() == 0) {
        this->colors = colors;
        this->revision = revision;
    }
    if (vertices.empty() && (this->colors != colors || this->revision != revision))
        keepDecoded();
    if (vertices.empty())
        stored.add(record);
    else
        add(paletteVertexOf(record, *colors, revision));
}

void FltVertexStore::keepFirst(std::size_t count)
{
    if (count >= stored.size() && count < size())
        vertices.resize(count - stored.size());
}

std::size_t FltVertexStore::endInFile() const
{
    if (stored.size() == 0)
        return 0;
    FltRecordView const last = stored[stored.size() - 1];
    return last.offset + last.size;
}

/// Others would get other colours.
void FltVertexStore::keepDecoded()
{
    for (std::uint32_t number = 0; number < stored.size(); ++number)
        vertices.push_back(decoded(number));
    stored = {};
}

FltVertex FltVertexStore::decoded(std::uint32_t number) const
{
    return paletteVertexOf(stored[number], *colors, revision);
}

std::array<double, 3> FltVertexStore::placeOf(std::uint32_t number) const
{
    if (number >= stored.size()) {
        double const(&position)[3] = vertices[number - stored.size()].position;
        return {position[0], position[1], position[2]};
    }
    static Coordinates const coordinates;
    FltRecordView const record = stored[number];
    return {record.doubleAt(coordinates.x), record.doubleAt(coordinates.y), record.doubleAt(coordinates.z)};
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
    return static_cast<std::uint32_t>(size() - 1);
}
