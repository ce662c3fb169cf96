#include "inspect/FltInventoryBuilder.h"

#include "messages/FltMessageSilence.h"
#include "messages/FltText.h"
#include "model/FltInstanceDefinitions.h"
#include "model/FltNodeWords.h"
#include "model/FltPaletteTexture.h"
#include "model/FltRecordEntries.h"
#include "model/FltSwitchMasks.h"
#include "records/FltOpcodeTable.h"
#include "records/FltRecordDOF.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordLOD.h"
#include "records/FltRecordLightSource.h"
#include "records/FltRecordLineStyle.h"
#include "records/FltRecordMaterial.h"
#include "records/FltRecordMesh.h"
#include "records/FltRecordTextureLayers.h"
#include "records/FltRecordTextureMapping.h"
#include "records/FltRecordTransformations.h"
#include "records/FltRecordVertex.h"
#include "records/FltVertexListEntry.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

namespace
{

using Part = FltOpcodeRow::Part;

std::string textOf(char const* characters, std::size_t room)
{
    return FltText::utf8({characters, ::strnlen(characters, room)});
}

void takeSurface(FltInventory::Surface& surface, FltRecordFace const& record)
{
    surface.color = record.primaryColorIndex;
    surface.texture = record.texturePatternIndex;
    surface.detailTexture = record.detailTexturePatternIndex;
    surface.material = record.materialIndex;
    surface.mapping = record.textureMappingIndex;
    surface.flags = record.flags;
    surface.drawType = record.drawType;
    surface.templateMode = static_cast<std::uint8_t>(record.templateBillboard);
    surface.lightMode = record.lightMode;
    surface.lineStyle = record.lineStyleIndex;
}

/// Bytes of a vertex up to the end of its coordinates.
template <class Record>
std::size_t endOfCoordinates()
{
    static std::size_t const end = [] {
        Record const vertex(0);
        return FltFields::endOf(vertex, &vertex.Zcoordinate);
    }();
    return end;
}

double determinantOf(float const (&matrix)[4][4])
{
    auto const at = [&](int row, int column) { return static_cast<double>(matrix[row][column]); };
    return at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1)) -
           at(0, 1) * (at(1, 0) * at(2, 2) - at(1, 2) * at(2, 0)) +
           at(0, 2) * (at(1, 0) * at(2, 1) - at(1, 1) * at(2, 0));
}

} // namespace

FltInventoryBuilder::FltInventoryBuilder(FltInventory& inventory, FltInventory::Offsets rule)
    : inventory(inventory), scan(inventory.scan), records(scan.file().data(), scan.file().size(), false),
      levels({Owner::Kind::node, 0, 0}, FltLimits::hierarchyDepth), rule(rule)
{
    inventory.nodes.emplace_back().opcode = FltOpcode::header;
}

/// The model's records say what the database holds; the scan beside them counts, and says what is wrong with
/// single ones.
void FltInventoryBuilder::build()
{
    FltMessageSilence const silence;
    makeRoom();
    bool isThere = records.next(record);
    while (scan.next()) {
        count();
        if (!isThere || scan.offset() != record.offset)
            continue; // one that the model passes over, or that continues another
        take();
        isThere = records.next(record);
    }
    closeLevels();
}

/// The lists grow to about a third of the file, and would take twice that while they grow.
void FltInventoryBuilder::makeRoom()
{
    std::size_t vertices = 0, oldVertices = 0, faces = 0, faceVertices = 0, nodes = 1;
    FltFraming all(scan.file().data(), scan.file().size());
    while (all.next()) {
        FltOpcodeRow const* const row = FltOpcodeTable::find(all.getOpcode());
        if (row == nullptr || all.getLength() < row->lengths.shortest)
            continue;
        if (row->part == Part::vertex)
            ++vertices;
        else if (row->part == Part::node)
            ++nodes;
        else if (row->opcode == FltOpcode::face)
            ++faces;
        else if (row->opcode == FltOpcode::vertexList)
            faceVertices += (all.getLength() - FltFieldReach::head) / sizeof(FltVertexListEntry::offset);
        else if (row->opcode >= FltOpcode::oldVertex && row->opcode <= FltOpcode::oldVertexColorNormal)
            ++oldVertices;
    }
    palette.reserve(vertices);
    inventory.vertices.reserve(vertices + oldVertices);
    inventory.nodes.reserve(nodes);
    inventory.faces.reserve(faces);
    inventory.faceVertices.reserve(faceVertices + oldVertices);
}

void FltInventoryBuilder::count()
{
    ++inventory.recordCount;
    FltInventory::Opcode& opcode = inventory.opcodes[scan.opcode()];
    if (opcode.count++ == 0)
        opcode.first = scan.offset();
    opcode.bytes += scan.length();
    for (std::string const& text : scan.complaints())
        inventory.complaints.push_back({scan.offset(), scan.opcode(), text});
    std::size_t const leastLength = scan.leastLength();
    if (scan.length() < leastLength)
        inventory.shortRecords.push_back({scan.offset(), scan.opcode(), scan.length(), leastLength});
}

void FltInventoryBuilder::take()
{
    switch (FltOpcodeTable::partOf(opcode())) {
    case Part::vertex:
        takeVertex();
        break;
    case Part::palette:
        takePalette();
        break;
    default:
        takeStep(levels.take(record));
        break;
    }
}

void FltInventoryBuilder::takeStep(FltLevelStep step)
{
    switch (step) {
    case FltLevelStep::node:
        takeNode();
        break;
    case FltLevelStep::ancillary:
        takeAncillary();
        break;
    case FltLevelStep::openedNothing:
        if (record.opcode == FltOpcode::pushLevel) // subfaces may lie on what isn't there
            addImbalance(FltInventory::Imbalance::Kind::pushWithoutNode, record.offset);
        break;
    case FltLevelStep::closed:
        endLevel(levels.getLast(), recordEnd());
        break;
    case FltLevelStep::closedOther:
        endLevel(levels.getLast(), recordEnd());
        [[fallthrough]];
    case FltLevelStep::closedNothing:
    case FltLevelStep::closedNoExtension:
        addImbalance(FltInventory::Imbalance::Kind::popWithoutPush, record.offset);
        break;
    case FltLevelStep::nowhere:
        inventory.strays.push_back({record.offset, opcode()});
        break;
    case FltLevelStep::tooDeep:
        takeTooDeep();
        break;
    case FltLevelStep::opened:
    case FltLevelStep::openedTooDeep:
    case FltLevelStep::extension:
    case FltLevelStep::inExtension:
        break;
    }
}

void FltInventoryBuilder::addImbalance(FltInventory::Imbalance::Kind kind, std::size_t offset)
{
    inventory.imbalances.push_back({kind, offset});
}

/// Keeps the nodes that stand in the first level that is left out.
void FltInventoryBuilder::takeTooDeep()
{
    if (levels.getLevelsTooDeep().size() != 1 || FltOpcodeTable::partOf(opcode()) != Part::node)
        return;
    std::uint32_t const node = levels.getLast().node;
    inventory.tooDeep.push_back({record.offset, opcode(), node});
    ++inventory.nodes[node].children;
}

void FltInventoryBuilder::takePalette()
{
    switch (record.opcode) {
    case FltOpcode::header:
        if (record.offset == 0) // a second one changes nothing
            takeHeader();
        break;
    case FltOpcode::vertexPalette:
        if (rule == FltInventory::Offsets::byPlace)
            palette.beginPalette(record);
        break;
    case FltOpcode::texturePattern: {
        FltPaletteTexture const texture(record);
        enter(inventory.textures, texture.patternIndex, textOf(texture.fileName, sizeof texture.fileName));
        break;
    }
    case FltOpcode::material: {
        FltDecoded<FltRecordMaterial> const material(record);
        enter(inventory.materials, material.index, textOf(material.name, sizeof material.name));
        break;
    }
    case FltOpcode::oldMaterialPalette:
        takeOldMaterials();
        break;
    case FltOpcode::lineStylePalette:
        enter(inventory.lineStyles, FltDecoded<FltRecordLineStylePalette>(record).lineStyleIndex, "");
        break;
    case FltOpcode::textureMappingPalette:
        if (auto const* const mapping = dynamic_cast<FltRecordTextureMappingPalette const*>(scan.record()))
            enter(inventory.textureMappings, mapping->index, textOf(mapping->name, sizeof mapping->name));
        break;
    case FltOpcode::lightSourcePalette: {
        FltDecoded<FltRecordWholeLightSourcePalette> const light(record);
        enter(inventory.lights, light.paletteIndex,
              textOf(light.lightSourceName, sizeof light.lightSourceName));
        break;
    }
    case FltOpcode::colorPalette:
        inventory.hasColorPalette = true;
        break;
    default:
        break;
    }
}

void FltInventoryBuilder::enter(FltInventory::Palette& entries, int index, std::string name)
{
    auto const [entry, isNew] = entries.try_emplace(index);
    if (!isNew)
        entry->second.repetition = record.offset;
    else
        entry->second.offset = record.offset;
    entry->second.name = std::move(name); // the later one wins
}

void FltInventoryBuilder::takeOldMaterials()
{
    inventory.hasOldMaterialPalette = true;
    auto const materials = std::make_unique<FltDecoded<FltRecordOLDMaterialPalette>>(record, scan.revision());
    int index = 0;
    for (auto const& entry : materials->entries)
        enter(inventory.materials, index++, textOf(entry.name, sizeof entry.name));
}

void FltInventoryBuilder::takeVertex()
{
    std::uint32_t const vertex = addVertex<FltRecordVertexColor>();
    palette.add(rule == FltInventory::Offsets::byPlace ? record.offset : summed.next(scan.length()), vertex);
}

template <class Record>
std::uint32_t FltInventoryBuilder::addVertex()
{
    bool const isWhole = record.offset + endOfCoordinates<Record>() <= scan.file().size();
    inventory.vertices.emplace_back(record.offset, opcode(), isWhole);
    return static_cast<std::uint32_t>(inventory.vertices.size() - 1);
}

/// What stands in the hierarchy: a node, something that one is made of, or what isn't known.
void FltInventoryBuilder::takeNode()
{
    Owner const parent = levels.getParent();
    hasLongId = false;
    levels.setLast({Owner::Kind::other, 0, parent.node});
    if (scan.record() == nullptr && record.size < scan.leastLength())
        return; // one of too many that are hardly there
    switch (FltOpcodeTable::partOf(opcode())) {
    case Part::node:
        takeNodeRecord();
        break;
    case Part::component:
        if (record.opcode == FltOpcode::face)
            takeFace();
        else if (record.opcode == FltOpcode::mesh)
            takeMesh();
        break;
    case Part::corners:
        if (parent.kind == Owner::Kind::face)
            takeCorners(inventory.faces[parent.number], parent.number);
        else if (parent.kind == Owner::Kind::mesh && record.opcode == FltOpcode::meshPrimitive)
            takePrimitive(inventory.meshes[parent.number]);
        break;
    default:
        break;
    }
}

void FltInventoryBuilder::takeNodeRecord()
{
    std::uint32_t const node = addNode();
    FltInventory::Node& made = inventory.nodes[node];
    switch (record.opcode) {
    case FltOpcode::externalReference: {
        FltDecoded<FltRecordExternalReference> const reference(record);
        made.name = textOf(reference.asciiPath, sizeof reference.asciiPath);
        inventory.references.push_back({record.offset, node, made.name});
        break;
    }
    case FltOpcode::instanceReference:
    case FltOpcode::instanceDefinition: {
        int const number = FltInstanceDefinitions::numberIn(record);
        made.name = std::to_string(number);
        (record.opcode == FltOpcode::instanceDefinition ? inventory.instanceDefinitions
                                                        : inventory.instanceReferences)
            .push_back({node, number});
        break;
    }
    case FltOpcode::lod: {
        FltDecoded<FltRecordLOD> const lod(record);
        inventory.levelsOfDetail.push_back(
            {node,
             lod.switchInDistance,
             lod.switchOutDistance,
             {lod.XcenterCoordinate, lod.YcenterCoordinate, lod.ZcenterCoordinate}});
        break;
    }
    case FltOpcode::oldLOD: {
        FltDecoded<FltRecordOLDLOD> const old(record);
        inventory.levelsOfDetail.push_back(
            {node,
             static_cast<double>(old.switchInDistance),
             static_cast<double>(old.switchOutDistance),
             {static_cast<double>(old.XcenterCoordinate), static_cast<double>(old.YcenterCoordinate),
              static_cast<double>(old.ZcenterCoordinate)}});
        break;
    }
    case FltOpcode::switchNode: {
        FltSwitchMasks masks(record);
        inventory.switches.push_back(
            {node, masks.currentMask, masks.maskCount, masks.wordsPerMask, std::move(masks.words)});
        break;
    }
    case FltOpcode::dof:
        takeDegreeOfFreedom(node);
        break;
    case FltOpcode::lightSource:
        inventory.lightSources.push_back(
            {node, FltDecoded<FltRecordLightSource>(record).indexIntoLightPalette});
        break;
    default:
        break;
    }
}

/// Adds the node of the record.
std::uint32_t FltInventoryBuilder::addNode()
{
    auto const node = static_cast<std::uint32_t>(inventory.nodes.size());
    FltInventory::Node& made = inventory.nodes.emplace_back();
    made.offset = record.offset;
    made.end = recordEnd();
    made.name = FltText::utf8(FltNodeWords::idIn(record));
    made.opcode = opcode();
    made.parent = levels.getParent().node;
    FltInventory::Node& above = inventory.nodes[made.parent];
    made.depth = above.depth + 1;
    ++above.children;
    levels.setLast({Owner::Kind::node, node, node});
    return node;
}

void FltInventoryBuilder::takeHeader()
{
    FltDecoded<FltRecordHeader> const stored(record);
    FltInventory::Header& header = inventory.header;
    header.name = textOf(stored.id, sizeof stored.id);
    header.revision = stored.formatRevisionLevel;
    header.editRevision = stored.editRevisionLevel;
    header.lastChange =
        FltText::withoutEnd(textOf(stored.lastRevisionDateTime, sizeof stored.lastRevisionDateTime));
    header.units = stored.vertexCoordinateUnits;
    header.unitMultiplier = stored.multiplierDiviserUnit;
    header.projection = stored.projectionType;
    header.ellipsoid = stored.earthEllipsoidModel;
    header.originLatitude = stored.originLatitude;
    header.originLongitude = stored.originLongitude;
    header.southWestLatitude = stored.southWestCornerLatitude;
    header.southWestLongitude = stored.southWestCornerLongitude;
    header.northEastLatitude = stored.northEastCornerLatitude;
    header.northEastLongitude = stored.northEastCornerLongitude;
    inventory.nodes[0].name = header.name;
}

void FltInventoryBuilder::takeDegreeOfFreedom(std::uint32_t node)
{
    FltDecoded<FltRecordDOF> const dof(record);
    auto const isLimited = [&](int bit) { return (dof.flags >> bit & 1) != 0; };
    inventory.degreesOfFreedom.push_back(
        {node,
         {{{dof.XMinValue, dof.XMaxValue, dof.XCurrentValue, isLimited(31)},
           {dof.YMinValue, dof.YMaxValue, dof.YCurrentValue, isLimited(30)},
           {dof.ZMinValue, dof.ZMaxValue, dof.ZCurrentValue, isLimited(29)},
           {dof.minimumPitch, dof.maxPitch, dof.currentPitch, isLimited(28)},
           {dof.minimumRoll, dof.maxRoll, dof.currentRoll, isLimited(27)},
           {dof.minimumYaw, dof.maxYaw, dof.currentYaw, isLimited(26)},
           {dof.XMinScale, dof.XMaxScale, dof.XCurrentScale, isLimited(25)},
           {dof.YMinScale, dof.YMaxScale, dof.YCurrentScale, isLimited(24)},
           {dof.ZMinScale, dof.ZMaxScale, dof.ZCurrentScale, isLimited(23)}}}});
}

/// Fills in what a face and a mesh have in common.
void FltInventoryBuilder::begin(FltInventory::Surface& surface, FltRecordFace const& stored)
{
    surface.offset = record.offset;
    surface.node = levels.getParent().node;
    takeSurface(surface, stored);
    surface.isSubface = levels.isSubface();
    use(surface);
    ++inventory.nodes[surface.node].faces;
}

void FltInventoryBuilder::takeFace()
{
    levels.setLast(
        {Owner::Kind::face, static_cast<std::uint32_t>(inventory.faces.size()), levels.getParent().node});
    FltInventory::Face& face = inventory.faces.emplace_back();
    begin(face, FltDecoded<FltRecordFace>(record, scan.revision()));
    face.firstVertex = static_cast<std::uint32_t>(inventory.faceVertices.size());
}

void FltInventoryBuilder::takeMesh()
{
    levels.setLast(
        {Owner::Kind::mesh, static_cast<std::uint32_t>(inventory.meshes.size()), levels.getParent().node});
    FltInventory::Mesh& mesh = inventory.meshes.emplace_back();
    begin(mesh, FltDecoded<FltRecordMesh>(record, scan.revision()));
    mesh.name = FltText::utf8(FltNodeWords::idIn(record));
}

void FltInventoryBuilder::use(FltInventory::Surface const& surface)
{
    auto const count = [](FltInventory::Palette& entries, int index) {
        auto const entry = entries.find(index);
        if (entry != entries.end())
            ++entry->second.uses;
    };
    count(inventory.textures, surface.texture);
    count(inventory.textures, surface.detailTexture);
    count(inventory.materials, surface.material);
    count(inventory.textureMappings, surface.mapping);
}

void FltInventoryBuilder::takeCorners(FltInventory::Face& face, std::uint32_t number)
{
    std::size_t const before = inventory.faceVertices.size();
    if (record.opcode == FltOpcode::vertexList)
        takeVertexList<FltVertexListEntry>(number);
    else if (record.opcode == FltOpcode::morphVertexList)
        takeVertexList<FltMorphVertexListEntry>(number);
    else if (record.opcode != FltOpcode::meshPrimitive)
        inventory.faceVertices.push_back(addVertex<FltRecordOldVertex>());
    face.vertexCount += static_cast<std::uint32_t>(inventory.faceVertices.size() - before);
}

template <class Entry>
void FltInventoryBuilder::takeVertexList(std::uint32_t face)
{
    Entry entry;
    FltRecordEntries const entries(record, entry);
    for (std::size_t i = 0; i < entries.countWhole(); ++i) {
        entries.decode(i, entry);
        std::uint32_t const vertex = palette.find(entry.offset);
        inventory.faceVertices.push_back(vertex);
        if (vertex == FltInventory::none)
            inventory.lostOffsets.push_back({record.offset, face, entry.offset});
    }
}

void FltInventoryBuilder::takeLocalVertexPool(FltInventory::Mesh& mesh) const
{
    FltDecoded<FltRecordLocalVertexPool> const head(record);
    mesh.hasPool = true;
    mesh.poolVertices += head.numberOfVertices;
    mesh.poolMask = head.attributeMask;
    FltRecordLocalVertexPool::Vertex vertex;
    vertex.mask = head.attributeMask;
    if (!vertex.has(FltRecordLocalVertexPool::Vertex::hasPosition))
        return;
    FltRecordEntries const entries(record, vertex, static_cast<FltRecordLocalVertexPool const&>(head));
    mesh.wholeVertices +=
        static_cast<std::uint32_t>(std::min<std::size_t>(head.numberOfVertices, entries.countWhole()));
}

void FltInventoryBuilder::takePrimitive(FltInventory::Mesh& mesh) const
{
    FltDecoded<FltRecordMeshPrimitive> const head(record);
    FltInventory::Primitive primitive;
    primitive.offset = record.offset;
    primitive.type = head.primitiveType;
    if (head.hasIndices()) {
        FltRecordMeshPrimitive::Index index;
        index.size = head.indexSize;
        FltRecordEntries const entries(record, index, static_cast<FltRecordMeshPrimitive const&>(head));
        primitive.indexCount =
            static_cast<std::uint32_t>(std::min<std::size_t>(head.indexCount, entries.countWhole()));
        for (std::uint32_t i = 0; i < primitive.indexCount; ++i) {
            entries.decode(i, index);
            if (index.value() >= mesh.wholeVertices)
                ++primitive.badIndices;
        }
    }
    primitive.badIndices += head.indexCount - primitive.indexCount;
    mesh.primitives.push_back(primitive);
}

void FltInventoryBuilder::takeAncillary()
{
    Owner const& owner = levels.getLast();
    if (owner.kind == Owner::Kind::node)
        inventory.nodes[owner.number].end = recordEnd();
    switch (record.opcode) {
    case FltOpcode::longID:
        takeLongId(owner);
        break;
    case FltOpcode::matrix:
        inventory.matrices.push_back(
            {record.offset, owner.node, determinantOf(FltDecoded<FltRecordMatrix>(record).matrix)});
        break;
    case FltOpcode::multitexture:
        takeMultitexture();
        break;
    case FltOpcode::localVertexPool:
        if (owner.kind == Owner::Kind::mesh)
            takeLocalVertexPool(inventory.meshes[owner.number]);
        break;
    default:
        break;
    }
}

/// The first one is the name.
void FltInventoryBuilder::takeLongId(Owner const& owner)
{
    std::string* const name = owner.kind == Owner::Kind::node   ? &inventory.nodes[owner.number].name
                              : owner.kind == Owner::Kind::mesh ? &inventory.meshes[owner.number].name
                                                                : nullptr;
    if (name != nullptr && !std::exchange(hasLongId, true))
        *name = FltText::utf8(FltNodeWords::longIdIn(record));
}

void FltInventoryBuilder::takeMultitexture()
{
    FltDecoded<FltRecordTextureLayers> const layers(record);
    for (int number = 1; number <= FltTextureLayerMask::layerCount; ++number) {
        auto const entry = layers.hasLayer(number) ? inventory.textures.find(layers.layer(number).texture)
                                                   : inventory.textures.end();
        if (entry != inventory.textures.end() &&
            record.holdsField<FltRecordTextureLayers>(layers, layers.layer(number).data))
            ++entry->second.uses;
    }
}

void FltInventoryBuilder::endLevel(Owner const& owner, std::uint64_t end)
{
    if (owner.kind == Owner::Kind::node)
        inventory.nodes[owner.number].end = end;
}

void FltInventoryBuilder::closeLevels()
{
    using Kind = FltInventory::Imbalance::Kind;
    for (std::size_t const offset : levels.getExtensions())
        addImbalance(Kind::neverClosed, offset);
    for (std::size_t const offset : levels.getLevelsTooDeep())
        addImbalance(Kind::neverClosed, offset);
    auto const& open = levels.getLevels();
    for (std::size_t i = open.size() - 1; i > 0; --i) {
        addImbalance(Kind::neverClosed, open[i].offset);
        endLevel(open[i].owner, scan.offset());
    }
    inventory.nodes[0].end = scan.offset();
}
