#include "visual/FltFaceReader.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "model/FltRecordEntries.h"
#include "records/FltOpcode.h"
#include "records/FltRecordLightPointPalette.h"
#include "records/FltRecordLightSource.h"
#include "records/FltRecordTextureLayers.h"
#include "records/FltVertexListEntry.h"
#include "toolkit/StackSpace.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>
#include <numeric>
#include <optional>

using Number = FltModelTree::Number;

namespace
{

using Vertex = FltRecordLocalVertexPool::Vertex;

constexpr int layerCount = FltTextureLayerMask::layerCount;

std::vector<std::uint32_t> indicesOf(FltRecordView const& record, FltRecordMeshPrimitive const& primitive)
{
    std::vector<std::uint32_t> indices;
    if (!primitive.hasIndices())
        return indices;
    FltRecordMeshPrimitive::Index index;
    index.size = primitive.indexSize;
    FltRecordEntries const entries(record, index, primitive);
    indices.resize(std::min<std::size_t>(primitive.indexCount, entries.countWhole()));
    for (std::size_t i = 0; i < indices.size(); ++i) {
        entries.decode(i, index);
        indices[i] = index.value();
    }
    return indices;
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
    case FltRecordMeshPrimitive::triangleStrip:
        for (std::size_t i = 0; i + 2 < count; ++i)
            call({i + i % 2, i + 1 - i % 2, i + 2});
        break;
    case FltRecordMeshPrimitive::triangleFan:
        for (std::size_t i = 1; i + 1 < count; ++i)
            call({0, i, i + 1});
        break;
    case FltRecordMeshPrimitive::quadStrip:
        for (std::size_t i = 0; i + 3 < count; i += 2)
            call({i, i + 1, i + 3, i + 2});
        break;
    case FltRecordMeshPrimitive::polygon:
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

void FltFaceReader::read(Number number, FltFaceReceiver& collector, FltObjectLook const& object,
                         FltPlacement const* placement)
{
    Context const context{collector, object, placement};
    switch (tools.model.tree.opcodeOf(number)) {
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

void FltFaceReader::forgetVertices()
{
    pool = {};
    poolMesh = FltModelTree::none;
    tools.model.vertices.keepFirst(paletteVertices);
    tools.stamps.resize(std::min(tools.stamps.size(), paletteVertices));
}

/// Decodes a face, which is the part of a mesh's record that both have, or a mesh.
void FltFaceReader::decode(Number number, FltRecordMesh& surface) const
{
    FltRecordView const& record = tools.model.tree.recordOf(number);
    surface.revision = tools.model.revision;
    if (record.opcode == FltOpcode::mesh)
        record.decodeFieldsTo(surface);
    else
        record.decodeFieldsTo<FltRecordFace>(surface);
}

FltFaceReader::Turning FltFaceReader::turningOf(Number number) const
{
    FltRecordView const& record = tools.model.tree.recordOf(number);
    if (record.opcode != FltOpcode::face && record.opcode != FltOpcode::mesh)
        return Turning::none;
    FltRecordMesh surface(record.classLength());
    decode(number, surface);
    return surface.templateBillboard == 2   ? Turning::aboutAxis
           : surface.templateBillboard == 4 ? Turning::aboutPoint
                                            : Turning::none;
}

std::vector<SbVec3d> FltFaceReader::pointsOf(Number number)
{
    FltRecordMesh face(0);
    FltFaceInput input(face);
    if (tools.model.tree.opcodeOf(number) == FltOpcode::mesh)
        input.vertices = poolOf(number).vertices;
    else
        readVertices(number, input);
    std::vector<SbVec3d> points;
    for (std::uint32_t const vertex : input.vertices)
        points.emplace_back(tools.model.vertices.placeOf(vertex).data());
    return points;
}

/// Reads what a face and a mesh have in common.
FltFaceInput FltFaceReader::read(FltRecordMesh& face, Number number, Context const& context, int level) const
{
    decode(number, face);
    FltFaceInput input(face);
    input.number = number;
    input.level = level;
    input.object = context.object;
    input.placement = context.placement;
    readLayers(number, input);
    return input;
}

void FltFaceReader::readFace(Number number, Context const& context, int below)
{
    int const level = below + order.levelOf(number);
    FltRecordMesh face(0);
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
        if (tree.opcodeOf(child) == FltOpcode::face)
            readFace(child, context, level + 1);
        else if (tree.opcodeOf(child) == FltOpcode::mesh)
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
            readVertexList<FltVertexListEntry>(child, input);
            readLayerUvs(child, false, input);
            break;
        case FltOpcode::morphVertexList:
            readVertexList<FltMorphVertexListEntry>(child, input);
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

template <class Entry>
void FltFaceReader::readVertexList(Number list, FltFaceInput& input)
{
    FltRecordView const& record = tools.model.tree.recordOf(list);
    Entry entry;
    FltRecordEntries const entries(record, entry);
    for (std::size_t i = 0; i < entries.countWhole(); ++i) {
        entries.decode(i, entry);
        std::int32_t const offset = entry.offset;
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
    if (vertex == FltVertexStore::none || !tools.model.vertices.hasUsablePlace(vertex))
        ++missingVertices;
    else
        input.vertices.push_back(vertex);
}

void FltFaceReader::readLayers(Number number, FltFaceInput& input) const
{
    FltModelTree const& tree = tools.model.tree;
    for (FltRecordView const& record : tree.ancillaries(number)) {
        if (record.opcode != FltOpcode::multitexture)
            continue;
        FltDecoded<FltRecordTextureLayers> const layers(record);
        for (int layer = 1; layer <= layerCount; ++layer)
            if (layers.hasLayer(layer) && tools.textures.has(layers.layer(layer).texture))
                input.layers.push_back({layer, layers.layer(layer).texture});
    }
    input.layerUvs.resize(input.layers.size());
}

/// Reads the list of texture coordinates of the layers after a vertex list.
void FltFaceReader::readLayerUvs(Number list, bool isMorph, FltFaceInput& input) const
{
    if (input.layers.empty())
        return;
    std::optional<FltRecordView> const record = tools.model.tree.ancillary(list, FltOpcode::uvList);
    if (!record)
        return;
    FltDecoded<FltRecordLayerUVs> const head(*record);
    FltRecordLayerUVs::Entry entry(head, isMorph);
    FltRecordEntries const entries(*record, entry, head);
    std::size_t const count = std::min(input.vertices.size(), entries.countBegun());
    for (std::size_t vertex = 0; vertex < count; ++vertex) {
        entries.decode(vertex, entry);
        for (std::size_t i = 0; i < input.layers.size(); ++i)
            if (int const layer = input.layers[i].number; entry.hasLayer(layer))
                input.layerUvs[i].emplace_back(entry.to[layer - 1]);
    }
}

void FltFaceReader::readMesh(Number number, Context const& context, int below)
{
    int const level = below + order.levelOf(number);
    FltRecordMesh face(0);
    FltFaceInput input = read(face, number, context, level);
    MeshPool const& vertices = poolOf(number);
    FltModelTree const& tree = tools.model.tree;
    for (Number child = tree[number].firstChild; child != FltModelTree::none; child = tree[child].nextSibling)
        if (tree.opcodeOf(child) == FltOpcode::meshPrimitive)
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
    for (FltRecordView const& record : tree.ancillaries(mesh))
        if (record.opcode == FltOpcode::localVertexPool)
            readPool(record, pool);
    return pool;
}

void FltFaceReader::readPool(FltRecordView const& record, MeshPool& pool)
{
    FltDecoded<FltRecordLocalVertexPool> const head(record);
    Vertex stored;
    stored.mask = head.attributeMask;
    if (!stored.has(Vertex::hasPosition))
        return;
    FltRecordEntries const entries(record, stored, head);
    std::size_t const count = std::min<std::size_t>(head.numberOfVertices, entries.countWhole());
    pool.layerUvs.resize(Vertex::layerCount);
    for (std::size_t i = 0; i < count; ++i) {
        entries.decode(i, stored);
        FltVertex vertex;
        std::copy(std::begin(stored.position), std::end(stored.position), vertex.position);
        if (stored.has(Vertex::hasColorIndex))
            vertex.setColor(tools.model.palettes.colors->atIndex(stored.colorIndex));
        if (stored.has(Vertex::hasPackedColor))
            vertex.setColor(FltColors::fromPacked(stored.packedColor));
        if (stored.has(Vertex::hasNormal))
            vertex.setNormal(stored.normal);
        if (stored.has(Vertex::hasFirstUv))
            vertex.setUv(stored.uv[0]);
        for (int layer = 0; layer < Vertex::layerCount; ++layer)
            if (stored.hasLayer(layer))
                pool.layerUvs[static_cast<std::size_t>(layer)].emplace_back(stored.uv[layer]);
        pool.vertices.push_back(tools.model.vertices.add(vertex));
    }
}

void FltFaceReader::readPrimitive(FltRecordView const& record, MeshPool const& vertices, FltFaceInput& input,
                                  FltFaceReceiver& collector)
{
    FltDecoded<FltRecordMeshPrimitive> const primitive(record);
    int const type = primitive.primitiveType;
    std::vector<std::uint32_t> const indices = indicesOf(record, primitive);
    forEachFace(type, indices.size(), [&](std::vector<std::size_t> const& face) {
        input.vertices.clear();
        for (std::vector<SbVec2f>& uvs : input.layerUvs)
            uvs.clear();
        for (std::size_t const place : face)
            addMeshVertex(indices[place], vertices, input);
        if (input.vertices.size() < face.size())
            ++tools.leftOut["mesh index without a vertex"];
        if (input.vertices.size() == face.size() ||
            (type == FltRecordMeshPrimitive::polygon && input.vertices.size() >= 3))
            collector.add(input);
    });
}

void FltFaceReader::addMeshVertex(std::uint32_t index, MeshPool const& vertices, FltFaceInput& input) const
{
    if (index >= vertices.vertices.size() || !tools.model.vertices.hasUsablePlace(vertices.vertices[index]))
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
    FltRecordMesh face(0);
    face.flags = 0x30000000; // a packed colour
    face.lightMode = 1;      // that of the vertices
    face.materialIndex = -1;
    face.texturePatternIndex = -1;
    FltFaceInput input(face);
    input.number = number;
    input.isLightPoints = true;
    input.object = context.object;
    input.placement = context.placement;
    std::fill(std::begin(face.packedColor), std::end(face.packedColor), std::uint8_t(255));
    if (record.opcode == FltOpcode::lightPoint) {
        input.pointSize = FltDecoded<FltRecordLightPoint>(record).actualPixelSize;
    } else {
        auto const& values = *tools.model.palettes.lightPoints;
        auto const found = values.find(FltDecoded<FltRecordIndexedLightPoint>(record).appearanceIndex);
        input.pointSize = found != values.end() ? found->second.pixelSize : 0;
    }
    input.pointSize = std::isfinite(input.pointSize) ? std::min(input.pointSize, 64.0F) : 0;
    readVertices(number, input);
    if (!input.vertices.empty())
        context.collector.add(input);
}
