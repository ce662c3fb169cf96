#include "inspect/FltInventoryBuilder.h"

#include "messages/FltText.h"
#include "model/FltRecordEntries.h"
#include "records/FltOpcodeTable.h"
#include "records/FltRecordControl.h"
#include "records/FltRecordDOF.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordHeader.h"
#include "records/FltRecordId.h"
#include "records/FltRecordLOD.h"
#include "records/FltRecordLightSource.h"
#include "records/FltRecordLineStyle.h"
#include "records/FltRecordLongID.h"
#include "records/FltRecordMaterial.h"
#include "records/FltRecordMesh.h"
#include "records/FltRecordSwitch.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordTextureLayers.h"
#include "records/FltRecordTextureMapping.h"
#include "records/FltRecordTexturePattern.h"
#include "records/FltRecordTransformations.h"
#include "records/FltRecordVertex.h"
#include "records/FltVertexListEntry.h"

#include <algorithm>
#include <cstring>

namespace
{

using Part = FltOpcodeRow::Part;

std::string textOf(char const* characters, std::size_t room)
{
    return FltText::utf8({characters, ::strnlen(characters, room)});
}

bool isPush(int opcode)
{
    Part const part = FltOpcodeTable::partOf(opcode);
    return part == Part::push || part == Part::pushExtension;
}

/// Each kind of level ends with the opcode after the one that it begins with.
int popOf(int pushOpcode)
{
    return pushOpcode + 1;
}

bool isPop(int opcode)
{
    Part const part = FltOpcodeTable::partOf(opcode);
    return part == Part::pop || part == Part::popExtension;
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

void FltInventoryBuilder::build()
{
    while (reader.next()) {
        count();
        take();
        opcodeBefore = reader.opcode();
    }
    closeLevels();
}

void FltInventoryBuilder::count()
{
    ++inventory.recordCount;
    FltInventory::Opcode& opcode = inventory.opcodes[reader.opcode()];
    if (opcode.count++ == 0)
        opcode.first = reader.offset();
    opcode.bytes += reader.length();
    for (std::string const& text : reader.complaints())
        inventory.complaints.push_back({reader.offset(), reader.opcode(), text});
    std::size_t const leastLength = reader.leastLength();
    if (reader.length() < leastLength)
        inventory.shortRecords.push_back({reader.offset(), reader.opcode(), reader.length(), leastLength});
}

void FltInventoryBuilder::take()
{
    int const opcode = reader.opcode();
    if (isStray())
        inventory.strays.push_back({reader.offset(), opcode});
    else if (isPush(opcode))
        push();
    else if (isPop(opcode))
        pop();
    else if (FltOpcodeTable::partOf(opcode) == Part::node || opcode == FltOpcode::header)
        takeNode();
    else if (opcode == FltOpcode::face)
        takeFace();
    else if (opcode >= FltOpcode::mesh && opcode <= FltOpcode::meshPrimitive)
        takeMeshPart();
    else if (opcode == FltOpcode::vertexList)
        takeVertexList();
    else if (opcode == FltOpcode::morphVertexList)
        takeMorphVertexList();
    else if (opcode >= FltOpcode::oldVertex && opcode <= FltOpcode::oldVertexColorNormal)
        takeOldVertex();
    else if (opcode >= FltOpcode::vertexColor && opcode <= FltOpcode::vertexColorUv)
        takeVertex();
    else if (opcode == FltOpcode::continuation &&
             (opcodeBefore == FltOpcode::localVertexPool || opcodeBefore == FltOpcode::continuation))
        takeLocalVertexPool();
    else if (reader.record() != nullptr && reader.record()->getRecordCategory() == "PALETTE_RECORD")
        takePalette();
    else
        takeAncillary();
}

/// Whether a record says more about a node, and follows none. What stands in an extension is no matter of
/// nodes.
bool FltInventoryBuilder::isStray()
{
    int const opcode = reader.opcode();
    Part const part = FltOpcodeTable::partOf(opcode);
    if (part == Part::pushExtension)
        ++extensionLevels;
    else if (part == Part::popExtension && extensionLevels > 0)
        --extensionLevels;
    if (extensionLevels > 0 || opcode == FltOpcode::continuation)
        return false;
    if (part == Part::node || part == Part::component || part == Part::corners || part == Part::push ||
        part == Part::pop)
        isAfterPop = part == Part::pop;
    return isAfterPop && part == Part::ancillary;
}

void FltInventoryBuilder::takePalette()
{
    FltRecord const* const record = reader.record();
    if (reader.opcode() == FltOpcode::vertexPalette)
        beginVertexPalette();
    else if (auto const* const texture = dynamic_cast<FltRecordTexturePattern const*>(record))
        enter(inventory.textures, texture->patternIndex, textOf(texture->fileName, sizeof texture->fileName));
    else if (auto const* const material = dynamic_cast<FltRecordMaterial const*>(record))
        enter(inventory.materials, material->index, textOf(material->name, sizeof material->name));
    else if (auto const* const materials = dynamic_cast<FltRecordOLDMaterialPalette const*>(record))
        takeOldMaterials(*materials);
    else if (auto const* const style = dynamic_cast<FltRecordLineStylePalette const*>(record))
        enter(inventory.lineStyles, style->lineStyleIndex, "");
    else if (auto const* const mapping = dynamic_cast<FltRecordTextureMappingPalette const*>(record))
        enter(inventory.textureMappings, mapping->index, textOf(mapping->name, sizeof mapping->name));
    else if (auto const* const light = dynamic_cast<FltRecordLightSourcePalette const*>(record))
        enter(inventory.lights, light->paletteIndex,
              textOf(light->lightSourceName, sizeof light->lightSourceName));
    else if (reader.opcode() == FltOpcode::colorPalette)
        inventory.hasColorPalette = true;
}

void FltInventoryBuilder::enter(FltInventory::Palette& entries, int index, std::string name)
{
    auto const [entry, isNew] = entries.try_emplace(index);
    if (!isNew)
        entry->second.repetition = reader.offset();
    else
        entry->second.offset = reader.offset();
    entry->second.name = std::move(name); // the later one wins
}

void FltInventoryBuilder::takeOldMaterials(FltRecordOLDMaterialPalette const& record)
{
    inventory.hasOldMaterialPalette = true;
    int index = 0;
    for (auto const& entry : record.entries)
        enter(inventory.materials, index++, textOf(entry.name, sizeof entry.name));
}

void FltInventoryBuilder::beginVertexPalette()
{
    palette.beginPalette(view());
    std::size_t const rest = reader.file().size() - reader.offset();
    std::size_t const bytes =
        std::min<std::size_t>(FltDecoded<FltRecordVertexPalette>(view()).vertexPaletteTotalLength, rest);
    inventory.vertices.reserve(bytes / FltRecordTable::leastOf(FltOpcode::vertexColor, reader.revision()));
}

void FltInventoryBuilder::takeVertex()
{
    std::uint32_t const vertex = addVertex();
    palette.add(reader.offset(), vertex);
}

void FltInventoryBuilder::takeOldVertex()
{
    std::uint32_t const face = currentFace();
    if (face == none)
        return;
    inventory.faceVertices.push_back(addVertex());
    ++inventory.faces[face].vertexCount;
}

std::uint32_t FltInventoryBuilder::addVertex()
{
    bool const isOld = reader.opcode() <= FltOpcode::oldVertexColorNormal;
    std::size_t const coordinatesEnd =
        isOld ? endOfCoordinates<FltRecordOldVertex>() : endOfCoordinates<FltRecordVertexColor>();
    bool const isWhole = reader.offset() + coordinatesEnd <= reader.file().size();
    inventory.vertices.push_back({reader.offset(), static_cast<std::uint8_t>(reader.opcode()), isWhole});
    return static_cast<std::uint32_t>(inventory.vertices.size() - 1);
}

void FltInventoryBuilder::addFaceVertex(std::int64_t offset)
{
    std::uint32_t const face = currentFace();
    std::uint32_t const vertex = palette.find(offset);
    inventory.faceVertices.push_back(vertex);
    if (vertex == none)
        inventory.lostOffsets.push_back({reader.offset(), face, offset});
    ++inventory.faces[face].vertexCount;
}

template <class Entry>
void FltInventoryBuilder::takeFaceVertices()
{
    FltRecordView const record = view();
    Entry entry;
    FltRecordEntries const entries(record, entry);
    for (std::size_t i = 0; i < entries.countWhole(); ++i) {
        entries.decode(i, entry);
        addFaceVertex(entry.offset);
    }
}

void FltInventoryBuilder::takeVertexList()
{
    if (currentFace() != none)
        takeFaceVertices<FltVertexListEntry>();
}

void FltInventoryBuilder::takeMorphVertexList()
{
    if (currentFace() == none)
        return;
    takeFaceVertices<FltMorphVertexListEntry>();
}

void FltInventoryBuilder::takeNode()
{
    FltRecord const* const record = reader.record();
    if (record == nullptr && reader.length() < reader.leastLength()) {
        last = {}; // one of too many that are hardly there
        return;
    }
    FltDecoded<FltRecordId> const id(view());
    std::string name =
        view().holdsField<FltRecordId>(id, id.idASCII) ? textOf(id.idASCII, sizeof id.idASCII) : "";
    if (auto const* const reference = dynamic_cast<FltRecordExternalReference const*>(record)) {
        std::string path = textOf(reference->asciiPath, sizeof reference->asciiPath);
        std::uint32_t const node = addNode(path);
        inventory.references.push_back({reader.offset(), node, std::move(path)});
        return;
    }
    auto const* const instance = dynamic_cast<AbstractInstanceRecord const*>(record);
    if (instance != nullptr)
        name = std::to_string(instance->instanceDefinitionNumber);
    std::uint32_t const node = addNode(std::move(name));
    if (auto const* const header = dynamic_cast<FltRecordHeader const*>(record))
        takeHeader(*header);
    else if (auto const* const lod = dynamic_cast<FltRecordLOD const*>(record))
        inventory.levelsOfDetail.push_back(
            {node,
             lod->switchInDistance,
             lod->switchOutDistance,
             {lod->XcenterCoordinate, lod->YcenterCoordinate, lod->ZcenterCoordinate}});
    else if (auto const* const old = dynamic_cast<FltRecordOLDLOD const*>(record))
        inventory.levelsOfDetail.push_back(
            {node,
             static_cast<double>(old->switchInDistance),
             static_cast<double>(old->switchOutDistance),
             {static_cast<double>(old->XcenterCoordinate), static_cast<double>(old->YcenterCoordinate),
              static_cast<double>(old->ZcenterCoordinate)}});
    else if (auto const* const switchRecord = dynamic_cast<FltRecordSwitch const*>(record))
        takeSwitch(*switchRecord);
    else if (auto const* const dof = dynamic_cast<FltRecordDOF const*>(record))
        takeDegreeOfFreedom(*dof);
    else if (auto const* const light = dynamic_cast<FltRecordLightSource const*>(record))
        inventory.lightSources.push_back({node, light->indexIntoLightPalette});
    else if (instance != nullptr)
        (reader.opcode() == FltOpcode::instanceDefinition ? inventory.instanceDefinitions
                                                          : inventory.instanceReferences)
            .push_back({node, instance->instanceDefinitionNumber});
}

std::uint32_t FltInventoryBuilder::addNode(std::string name)
{
    auto const node = static_cast<std::uint32_t>(inventory.nodes.size());
    FltInventory::Node made;
    made.offset = reader.offset();
    made.end = recordEnd();
    made.name = std::move(name);
    made.opcode = reader.opcode();
    made.parent = node == 0 ? none : parent();
    if (made.parent != none) {
        FltInventory::Node& above = inventory.nodes[made.parent];
        made.depth = above.depth + 1;
        ++above.children;
    }
    inventory.nodes.push_back(std::move(made));
    last = {node, none, none};
    return node;
}

void FltInventoryBuilder::takeHeader(FltRecordHeader const& record)
{
    FltInventory::Header& header = inventory.header;
    if (inventory.nodes.size() > 1)
        return; // a second one changes nothing
    header.name = textOf(record.id, sizeof record.id);
    header.revision = record.formatRevisionLevel;
    header.editRevision = record.editRevisionLevel;
    header.lastChange = textOf(record.lastRevisionDateTime, sizeof record.lastRevisionDateTime);
    header.units = record.vertexCoordinateUnits;
    header.unitMultiplier = record.multiplierDiviserUnit;
    header.projection = record.projectionType;
    header.ellipsoid = record.earthEllipsoidModel;
    header.originLatitude = record.originLatitude;
    header.originLongitude = record.originLongitude;
    header.southWestLatitude = record.southWestCornerLatitude;
    header.southWestLongitude = record.southWestCornerLongitude;
    header.northEastLatitude = record.northEastCornerLatitude;
    header.northEastLongitude = record.northEastCornerLongitude;
}

void FltInventoryBuilder::takeSwitch(FltRecordSwitch const& record)
{
    FltInventory::Switch made;
    made.node = last.node;
    made.currentMask = record.indexOfCurrentMask;
    made.maskCount = record.numberOfMasks;
    made.wordsPerMask = record.numberOf32BitWordsPerMask;
    for (int i = 0; i < record.maskWordCount; ++i)
        made.words.push_back(static_cast<std::uint32_t>(record.masks[static_cast<std::size_t>(i)]));
    inventory.switches.push_back(std::move(made));
}

void FltInventoryBuilder::takeDegreeOfFreedom(FltRecordDOF const& record)
{
    auto const isLimited = [&](int bit) { return (record.flags >> bit & 1) != 0; };
    inventory.degreesOfFreedom.push_back(
        {last.node,
         {{{record.XMinValue, record.XMaxValue, record.XCurrentValue, isLimited(31)},
           {record.YMinValue, record.YMaxValue, record.YCurrentValue, isLimited(30)},
           {record.ZMinValue, record.ZMaxValue, record.ZCurrentValue, isLimited(29)},
           {record.minimumPitch, record.maxPitch, record.currentPitch, isLimited(28)},
           {record.minimumRoll, record.maxRoll, record.currentRoll, isLimited(27)},
           {record.minimumYaw, record.maxYaw, record.currentYaw, isLimited(26)},
           {record.XMinScale, record.XMaxScale, record.XCurrentScale, isLimited(25)},
           {record.YMinScale, record.YMaxScale, record.YCurrentScale, isLimited(24)},
           {record.ZMinScale, record.ZMaxScale, record.ZCurrentScale, isLimited(23)}}}});
}

void FltInventoryBuilder::takeFace()
{
    auto const* const decoded = dynamic_cast<FltRecordFace const*>(reader.record());
    if (decoded == nullptr)
        return;
    FltInventory::Face face;
    face.offset = reader.offset();
    face.node = parent();
    takeSurface(face, *decoded);
    face.isSubface = subfaceLevels > 0;
    face.firstVertex = static_cast<std::uint32_t>(inventory.faceVertices.size());
    use(face);
    last = {none, static_cast<std::uint32_t>(inventory.faces.size()), none};
    if (face.node != none)
        ++inventory.nodes[face.node].faces;
    inventory.faces.push_back(face);
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

void FltInventoryBuilder::takeMeshPart()
{
    if (reader.opcode() == FltOpcode::mesh)
        takeMesh();
    else if (reader.opcode() == FltOpcode::localVertexPool)
        takeLocalVertexPool();
    else
        takePrimitive();
}

void FltInventoryBuilder::takeMesh()
{
    FltInventory::Mesh made;
    made.offset = reader.offset();
    made.node = parent();
    FltDecoded<FltRecordMesh> const record(view(), reader.revision());
    if (view().holdsField<FltRecordMesh>(record, record.idField))
        made.name = textOf(record.idField, sizeof record.idField);
    takeSurface(made, record);
    made.isSubface = subfaceLevels > 0;
    use(made);
    last = {none, none, static_cast<std::uint32_t>(inventory.meshes.size())};
    if (made.node != none)
        ++inventory.nodes[made.node].faces;
    inventory.meshes.push_back(std::move(made));
}

void FltInventoryBuilder::takeLocalVertexPool()
{
    if (inventory.meshes.empty())
        return;
    FltInventory::Mesh& owner = inventory.meshes.back();
    std::size_t const body = reader.length() - std::min<std::size_t>(reader.length(), FltFieldReach::head);
    if (reader.opcode() == FltOpcode::localVertexPool) {
        FltDecoded<FltRecordLocalVertexPool> const head(view());
        owner.hasPool = true;
        owner.poolVertices = head.numberOfVertices;
        owner.poolMask = head.attributeMask;
        poolBytes = body - std::min(body, FltFields::sizeOf<FltRecordLocalVertexPool>(head));
    } else if (owner.hasPool) {
        poolBytes += body;
    }
    FltRecordLocalVertexPool::Vertex vertex;
    vertex.mask = owner.poolMask;
    std::size_t const size = FltFields::sizeOf(vertex);
    owner.wholeVertices =
        size == 0 ? 0
                  : static_cast<std::uint32_t>(std::min<std::uint64_t>(owner.poolVertices, poolBytes / size));
}

void FltInventoryBuilder::takePrimitive()
{
    if (inventory.meshes.empty())
        return;
    FltInventory::Mesh& owner = inventory.meshes.back();
    FltRecordView const record = view();
    FltDecoded<FltRecordMeshPrimitive> const head(record);
    FltInventory::Primitive primitive;
    primitive.offset = reader.offset();
    primitive.type = head.primitiveType;
    if (head.hasIndices()) {
        FltRecordMeshPrimitive::Index index;
        index.size = head.indexSize;
        FltRecordEntries const entries(record, index, static_cast<FltRecordMeshPrimitive const&>(head));
        primitive.indexCount =
            static_cast<std::uint32_t>(std::min<std::size_t>(head.indexCount, entries.countWhole()));
        for (std::uint32_t i = 0; i < primitive.indexCount; ++i) {
            entries.decode(i, index);
            if (index.value() >= owner.wholeVertices)
                ++primitive.badIndices;
        }
    }
    primitive.badIndices += head.indexCount - primitive.indexCount;
    owner.primitives.push_back(primitive);
}

void FltInventoryBuilder::takeAncillary()
{
    if (last.node != none)
        inventory.nodes[last.node].end = recordEnd();
    FltRecord const* const record = reader.record();
    if (auto const* const longID = dynamic_cast<FltRecordLongID const*>(record)) {
        if (last.node != none && longID->idASCII != nullptr)
            inventory.nodes[last.node].name = textOf(longID->idASCII.get(), reader.length());
        else if (last.mesh != none && longID->idASCII != nullptr)
            inventory.meshes[last.mesh].name = textOf(longID->idASCII.get(), reader.length());
    } else if (auto const* const matrix = dynamic_cast<FltRecordMatrix const*>(record)) {
        keepMatrix(matrix->matrix);
    } else if (reader.opcode() == FltOpcode::multitexture) {
        takeMultitexture();
    }
}

void FltInventoryBuilder::keepMatrix(float const (&matrix)[4][4])
{
    std::uint32_t const node = last.node != none ? last.node : parent();
    inventory.matrices.push_back({reader.offset(), node, determinantOf(matrix)});
}

void FltInventoryBuilder::takeMultitexture()
{
    FltDecoded<FltRecordTextureLayers> const layers(view());
    for (int number = 1; number <= FltTextureLayerMask::layerCount; ++number) {
        auto const entry = layers.hasLayer(number) ? inventory.textures.find(layers.layer(number).texture)
                                                   : inventory.textures.end();
        if (entry != inventory.textures.end() &&
            view().holdsField<FltRecordTextureLayers>(layers, layers.layer(number).data))
            ++entry->second.uses;
    }
}

void FltInventoryBuilder::push()
{
    int const opcode = reader.opcode();
    // A level right after another one goes on with the same node.
    Owner owner = isPop(opcodeBefore) ? lastClosed : last;
    if (opcode == FltOpcode::pushSubface)
        ++subfaceLevels;
    if (opcode == FltOpcode::pushLevel && owner.isNothing())
        inventory.imbalances.push_back({FltInventory::Imbalance::Kind::pushWithoutNode, reader.offset()});
    if (opcode != FltOpcode::pushLevel || owner.isNothing())
        owner = levels.empty() ? Owner{0, none, none} : levels.back().owner;
    else if (owner.node != none)
        inventory.nodes[owner.node].hasLevel = true;
    levels.push_back({opcode, reader.offset(), owner});
    last = {};
}

void FltInventoryBuilder::pop()
{
    last = {};
    bool const isClosing = !levels.empty() && popOf(levels.back().opcode) == reader.opcode();
    if (!isClosing) {
        inventory.imbalances.push_back({FltInventory::Imbalance::Kind::popWithoutPush, reader.offset()});
        return;
    }
    Level const level = levels.back();
    levels.pop_back();
    lastClosed = level.owner;
    endLevel(level, recordEnd());
}

void FltInventoryBuilder::endLevel(Level const& level, std::uint64_t end)
{
    if (level.opcode == FltOpcode::pushSubface)
        --subfaceLevels;
    if (level.opcode == FltOpcode::pushLevel && level.owner.node != none)
        inventory.nodes[level.owner.node].end = end;
}

void FltInventoryBuilder::closeLevels()
{
    for (; !levels.empty(); levels.pop_back()) {
        inventory.imbalances.push_back({FltInventory::Imbalance::Kind::neverClosed, levels.back().offset});
        endLevel(levels.back(), reader.offset());
    }
    if (!inventory.nodes.empty())
        inventory.nodes[0].end = reader.offset();
}

std::uint32_t FltInventoryBuilder::parent() const
{
    if (levels.empty())
        return 0;
    Owner const& owner = levels.back().owner;
    return owner.node != none   ? owner.node
           : owner.face != none ? inventory.faces[owner.face].node
                                : inventory.meshes[owner.mesh].node;
}

std::uint32_t FltInventoryBuilder::currentFace() const
{
    return last.face != none ? last.face : levels.empty() ? none : levels.back().owner.face;
}

FltRecordView FltInventoryBuilder::view() const
{
    return {reader.bytes().data(), reader.length(), static_cast<std::uint32_t>(reader.opcode()),
            reader.offset()};
}
