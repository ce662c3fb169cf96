#include "visual/FltFaceReader.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcode.h"
#include "records/FltRecordLightSource.h"
#include "toolkit/StackSpace.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numeric>

using Number = FltModelTree::Number;

namespace
{

/// Bytes of a face record that a mesh has a reserved word in front of.
constexpr std::size_t meshGap = 12;
constexpr std::size_t meshGapSize = 4;

/// In masks of texture layers bit 31 is layer 1, down to bit 25 for layer 7.
constexpr int layerCount = 7;
std::uint32_t layerBit(int layer)
{
    return 1U << (32 - layer);
}

/// In the mask of a mesh's vertices, from the top.
enum PoolBit : std::uint32_t {
    poolPosition = 1U << 31,
    poolColorIndex = 1U << 30,
    poolPackedColor = 1U << 29,
    poolNormal = 1U << 28,
    poolFirstUv = 1U << 27,
};
constexpr int poolLayerCount = 8;

enum PrimitiveType : std::int16_t { triangleStrip = 1, triangleFan = 2, quadStrip = 3, polygon = 4 };

bool isFinite(double const (&position)[3])
{
    return std::all_of(std::begin(position), std::end(position),
                       [](double part) { return std::abs(part) < 1e30; });
}

std::vector<std::uint32_t> indicesOf(FltRecordView const& record)
{
    std::size_t const size = record.word16At(6);
    std::vector<std::uint32_t> indices;
    if (size != 1 && size != 2 && size != 4)
        return indices;
    std::size_t const count =
        std::min<std::size_t>(record.word32At(8), (record.size - std::min(record.size, 12U)) / size);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t const at = 12 + size * i;
        indices.push_back(size == 1   ? record.byteAt(at)
                          : size == 2 ? record.word16At(at)
                                      : record.word32At(at));
    }
    return indices;
}

std::size_t poolVertexSize(std::uint32_t mask)
{
    std::size_t size = (mask & poolPosition) != 0 ? 24 : 0;
    size += (mask & poolColorIndex) != 0 ? 4 : 0;
    size += (mask & poolPackedColor) != 0 ? 4 : 0;
    size += (mask & poolNormal) != 0 ? 12 : 0;
    for (int layer = 0; layer < poolLayerCount; ++layer)
        size += (mask & poolFirstUv >> layer) != 0 ? 8 : 0;
    return size;
}

/// Calls an action for each face of a primitive, with the places of its vertices in the list of indices.
template <class Action>
void forEachFace(int type, std::size_t count, Action action)
{
    std::vector<std::size_t> face;
    auto const call = [&](std::initializer_list<std::size_t> places) {
        face.assign(places);
        action(face);
    };
    switch (type) {
    case triangleStrip:
        for (std::size_t i = 0; i + 2 < count; ++i)
            call({i + i % 2, i + 1 - i % 2, i + 2});
        break;
    case triangleFan:
        for (std::size_t i = 1; i + 1 < count; ++i)
            call({0, i, i + 1});
        break;
    case quadStrip:
        for (std::size_t i = 0; i + 3 < count; i += 2)
            call({i, i + 1, i + 3, i + 2});
        break;
    case polygon:
        face.resize(count);
        std::iota(face.begin(), face.end(), std::size_t(0));
        action(face);
        break;
    default:
        break;
    }
}

} // namespace

bool FltFaceReader::reads(std::uint32_t opcode)
{
    return opcode == FltOpcode::face || opcode == FltOpcode::mesh || opcode == FltOpcode::lightPoint ||
           opcode == FltOpcode::indexedLightPoint;
}

void FltFaceReader::read(Number number, FltFaceCollector& collector, float objectTransparency,
                         FltPlacement const* placement)
{
    Context const context{collector, objectTransparency, placement};
    switch (tools.model.tree.recordOf(number).opcode) {
    case FltOpcode::face:
        readFace(number, context, 0);
        break;
    case FltOpcode::mesh:
        readMesh(number, context, 0);
        break;
    default:
        readLightPoints(number, context);
        break;
    }
}

/// A mesh is a face with a reserved word after its id.
void FltFaceReader::decode(Number number, FltRecordFace& face) const
{
    FltRecordView const& record = tools.model.tree.recordOf(number);
    face.revision = tools.model.revision;
    if (record.opcode == FltOpcode::face) {
        record.decodeTo(face);
        return;
    }
    std::vector<char> bytes(record.data, record.data + record.size);
    bytes.erase(bytes.begin() + std::min<std::ptrdiff_t>(meshGap, std::ptrdiff_t(bytes.size())),
                bytes.begin() +
                    std::min<std::ptrdiff_t>(meshGap + meshGapSize, std::ptrdiff_t(bytes.size())));
    FltRecordView const asFace{bytes.data(), static_cast<std::uint32_t>(bytes.size()), FltOpcode::face,
                               record.offset};
    asFace.decodeTo(face);
}

FltFaceReader::Turning FltFaceReader::turningOf(Number number) const
{
    FltRecordView const& record = tools.model.tree.recordOf(number);
    if (record.opcode != FltOpcode::face && record.opcode != FltOpcode::mesh)
        return Turning::none;
    int const templateBillboard = record.byteAt(record.opcode == FltOpcode::face ? 25 : 29);
    return templateBillboard == 2   ? Turning::aboutAxis
           : templateBillboard == 4 ? Turning::aboutPoint
                                    : Turning::none;
}

std::vector<SbVec3d> FltFaceReader::pointsOf(Number number)
{
    FltRecordFace face(80);
    FltFaceInput input(face);
    if (tools.model.tree.recordOf(number).opcode == FltOpcode::mesh)
        input.vertices = poolOf(number).vertices;
    else
        readVertices(number, input);
    std::vector<SbVec3d> points;
    for (std::uint32_t const vertex : input.vertices)
        points.emplace_back(tools.model.vertices[vertex].position);
    return points;
}

/// Reads what a face and a mesh have in common.
FltFaceInput FltFaceReader::read(FltRecordFace& face, Number number, Context const& context, int level) const
{
    decode(number, face);
    FltFaceInput input(face);
    input.level = level;
    input.objectTransparency = context.objectTransparency;
    input.placement = context.placement;
    readLayers(number, input);
    return input;
}

void FltFaceReader::readFace(Number number, Context const& context, int level)
{
    FltRecordFace face(80);
    FltFaceInput input = read(face, number, context, level);
    if (readVertices(number, input))
        context.collector.add(input);
    readFacesOn(number, context, level);
}

void FltFaceReader::readFacesOn(Number number, Context const& context, int level)
{
    FltModelTree& tree = tools.model.tree;
    for (Number child = tree[number].firstChild; child != FltModelTree::none;
         child = tree[child].nextSibling) {
        if (!StackSpace::holds(FltLimits::stackForALevel))
            return tree.leaveOutFrom(tree.recordOf(child));
        if (tree.recordOf(child).opcode == FltOpcode::face)
            readFace(child, context, level + 1);
        else if (tree.recordOf(child).opcode == FltOpcode::mesh)
            readMesh(child, context, level + 1);
    }
}

/// Reads the vertices of a face. @return whether enough of them are there
bool FltFaceReader::readVertices(Number number, FltFaceInput& input)
{
    FltModelTree const& tree = tools.model.tree;
    missingVertices = 0;
    for (Number child = tree[number].firstChild; child != FltModelTree::none;
         child = tree[child].nextSibling) {
        FltRecordView const& record = tree.recordOf(child);
        switch (record.opcode) {
        case FltOpcode::vertexList:
            readVertexList(child, 4, input);
            readLayerUvs(child, false, input);
            break;
        case FltOpcode::morphVertexList:
            readVertexList(child, 8, input);
            readLayerUvs(child, true, input);
            break;
        case FltOpcode::oldVertex:
        case FltOpcode::oldVertexColor:
        case FltOpcode::oldVertexColorNormal:
            addVertex(tools.model.vertices.addOldVertex(record, *tools.model.palettes.colors), input);
            break;
        default:
            break;
        }
    }
    if (missingVertices == 0)
        return true;
    tools.leftOut["vertex offset at which no vertex begins"] += static_cast<std::int64_t>(missingVertices);
    if (input.vertices.size() >= 3)
        return true;
    ++tools.leftOut["face with missing vertices"];
    return false;
}

/// A list of offsets. Of an entry with two of them the second one counts, which is what a morph ends at.
void FltFaceReader::readVertexList(Number list, std::size_t entrySize, FltFaceInput& input)
{
    FltRecordView const& record = tools.model.tree.recordOf(list);
    for (std::size_t at = entrySize; at + 4 <= record.size; at += entrySize) {
        std::int32_t const offset = record.int32At(at);
        std::uint32_t const vertex = tools.model.vertices.find(offset);
        if (vertex == FltVertexStore::none) {
            FltWarningMessageConsole::setPosition(record.offset, static_cast<int>(record.opcode));
            FltWarningMessageConsole::notifyDamage("A face names an offset at which no vertex begins",
                                                   ": " + std::to_string(offset));
        }
        addVertex(vertex, input);
    }
}

void FltFaceReader::addVertex(std::uint32_t vertex, FltFaceInput& input)
{
    if (vertex == FltVertexStore::none || !isFinite(tools.model.vertices[vertex].position))
        ++missingVertices;
    else
        input.vertices.push_back(vertex);
}

void FltFaceReader::readLayers(Number number, FltFaceInput& input) const
{
    FltModelTree const& tree = tools.model.tree;
    FltRecordView const* const end = tree.ancillaryEnd(number);
    for (FltRecordView const* record = tree.ancillaryBegin(number); record != end; ++record) {
        if (record->opcode != FltOpcode::multitexture)
            continue;
        std::size_t at = 8;
        for (int layer = 1; layer <= layerCount; ++layer) {
            if ((record->word32At(4) & layerBit(layer)) == 0)
                continue;
            std::int32_t const texture = record->word16At(at);
            if (tools.textures.has(texture))
                input.layers.push_back({layer, texture});
            at += 8;
        }
    }
    input.layerUvs.resize(input.layers.size());
}

/// Reads the list of texture coordinates of the layers after a vertex list.
void FltFaceReader::readLayerUvs(Number list, bool isMorph, FltFaceInput& input) const
{
    if (input.layers.empty())
        return;
    FltModelTree const& tree = tools.model.tree;
    FltRecordView const* const end = tree.ancillaryEnd(list);
    FltRecordView const* record = tree.ancillaryBegin(list);
    while (record != end && record->opcode != FltOpcode::uvList)
        ++record;
    if (record == end)
        return;
    std::size_t const entrySize = isMorph ? 16 : 8;
    std::size_t at = 8;
    for (std::size_t vertex = 0; vertex < input.vertices.size() && at < record->size; ++vertex)
        for (int layer = 1; layer <= layerCount; ++layer) {
            if ((record->word32At(4) & layerBit(layer)) == 0)
                continue;
            for (std::size_t i = 0; i < input.layers.size(); ++i)
                if (input.layers[i].number == layer)
                    input.layerUvs[i].emplace_back(record->floatAt(at + entrySize - 8),
                                                   record->floatAt(at + entrySize - 4));
            at += entrySize;
        }
}

void FltFaceReader::readMesh(Number number, Context const& context, int level)
{
    FltRecordFace face(80);
    FltFaceInput input = read(face, number, context, level);
    MeshPool const& vertices = poolOf(number);
    FltModelTree const& tree = tools.model.tree;
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        if (tree.recordOf(child).opcode == FltOpcode::meshPrimitive)
            readPrimitive(tree.recordOf(child), vertices, input, context.collector);
    readFacesOn(number, context, level);
}

/// The vertices of a mesh, which are read once for all its primitives.
FltFaceReader::MeshPool const& FltFaceReader::poolOf(Number mesh)
{
    if (poolMesh == mesh)
        return pool;
    poolMesh = mesh;
    pool = MeshPool();
    FltModelTree const& tree = tools.model.tree;
    FltRecordView const* const end = tree.ancillaryEnd(mesh);
    for (FltRecordView const* record = tree.ancillaryBegin(mesh); record != end; ++record)
        if (record->opcode == FltOpcode::localVertexPool)
            readPool(*record, pool);
    return pool;
}

void FltFaceReader::readPool(FltRecordView const& record, MeshPool& pool)
{
    pool.mask = record.word32At(8);
    std::size_t const vertexSize = poolVertexSize(pool.mask);
    if ((pool.mask & poolPosition) == 0 || record.size < 12)
        return;
    std::size_t const count = std::min<std::size_t>(record.word32At(4), (record.size - 12) / vertexSize);
    pool.layerUvs.resize(poolLayerCount);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t at = 12 + vertexSize * i;
        FltVertex vertex;
        for (int axis = 0; axis < 3; ++axis, at += 8)
            vertex.position[axis] = record.doubleAt(at);
        if ((pool.mask & poolColorIndex) != 0) {
            vertex.color = tools.model.palettes.colors->atIndex(record.int32At(at));
            vertex.flags |= FltVertex::hasColor;
            at += 4;
        }
        if ((pool.mask & poolPackedColor) != 0) {
            vertex.color = FltColors::fromPacked(record.word32At(at));
            vertex.flags |= FltVertex::hasColor;
            at += 4;
        }
        if ((pool.mask & poolNormal) != 0) {
            for (int axis = 0; axis < 3; ++axis, at += 4)
                vertex.normal[axis] = record.floatAt(at);
            vertex.flags |= FltVertex::hasNormal;
        }
        for (int layer = 0; layer < poolLayerCount; ++layer) {
            if ((pool.mask & poolFirstUv >> layer) == 0)
                continue;
            pool.layerUvs[static_cast<std::size_t>(layer)].emplace_back(record.floatAt(at),
                                                                        record.floatAt(at + 4));
            at += 8;
        }
        if ((pool.mask & poolFirstUv) != 0) {
            SbVec2f const& uv = pool.layerUvs[0].back();
            vertex.uv[0] = uv[0];
            vertex.uv[1] = uv[1];
            vertex.flags |= FltVertex::hasUv;
        }
        pool.vertices.push_back(tools.model.vertices.add(vertex));
    }
}

void FltFaceReader::readPrimitive(FltRecordView const& record, MeshPool const& vertices, FltFaceInput& input,
                                  FltFaceCollector& collector)
{
    std::vector<std::uint32_t> const indices = indicesOf(record);
    int const type = static_cast<std::int16_t>(record.word16At(4));
    forEachFace(type, indices.size(), [&](std::vector<std::size_t> const& face) {
        input.vertices.clear();
        for (std::vector<SbVec2f>& uvs : input.layerUvs)
            uvs.clear();
        for (std::size_t const place : face)
            addMeshVertex(indices[place], vertices, input);
        if (input.vertices.size() < face.size())
            ++tools.leftOut["mesh index without a vertex"];
        if (input.vertices.size() == face.size() || (type == polygon && input.vertices.size() >= 3))
            collector.add(input);
    });
}

void FltFaceReader::addMeshVertex(std::uint32_t index, MeshPool const& vertices, FltFaceInput& input) const
{
    if (index >= vertices.vertices.size() ||
        !isFinite(tools.model.vertices[vertices.vertices[index]].position))
        return;
    input.vertices.push_back(vertices.vertices[index]);
    for (std::size_t i = 0; i < input.layers.size(); ++i) {
        std::vector<SbVec2f> const& uvs = vertices.layerUvs[static_cast<std::size_t>(input.layers[i].number)];
        input.layerUvs[i].push_back(index < uvs.size() ? uvs[index] : SbVec2f(0, 0));
    }
}

void FltFaceReader::readLightPoints(Number number, Context const& context)
{
    FltRecordView const& record = tools.model.tree.recordOf(number);
    FltRecordFace face(80);
    face.flags = 0x30000000; // a packed colour
    face.lightMode = 1;      // that of the vertices
    face.materialIndex = -1;
    face.texturePatternIndex = -1;
    FltFaceInput input(face);
    input.isLightPoints = true;
    input.objectTransparency = context.objectTransparency;
    input.placement = context.placement;
    std::fill(std::begin(face.packedColor), std::end(face.packedColor), std::uint8_t(255));
    if (record.opcode == FltOpcode::lightPoint) {
        FltRecordLightPoint point(record.classLength());
        record.decodeTo(point);
        input.pointSize = point.actualPixelSize;
    } else {
        auto const& values = *tools.model.palettes.lightPoints;
        auto const found = values.find(record.int32At(12));
        input.pointSize = found != values.end() ? found->second.pixelSize : 0;
    }
    input.pointSize = std::isfinite(input.pointSize) ? std::min(input.pointSize, 64.0F) : 0;
    readVertices(number, input);
    if (!input.vertices.empty())
        context.collector.add(input);
}
