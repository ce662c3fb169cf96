#include "inspect/FltCheck.h"

#include "inspect/FltFaceShape.h"
#include "messages/FltLimits.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "records/FltOpcodeTable.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <unordered_map>

namespace
{

constexpr std::uint32_t none = FltInventory::none;

std::string quoted(std::string const& name)
{
    return "\"" + name + "\"";
}

/// A distance as people write it.
std::string textOf(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

bool holdsLineFeed(std::int64_t number)
{
    for (int shift = 0; shift < 32; shift += 8)
        if ((number >> shift & 0xff) == '\n')
            return true;
    return false;
}

bool hasTextureCoordinates(int vertexOpcode)
{
    // Old vertices have them or not by the length of their records: they count as having them.
    return vertexOpcode != FltOpcode::vertexColor && vertexOpcode != FltOpcode::vertexColorNormal;
}

} // namespace

bool FltCheck::addHere(int number, std::int64_t offset, int opcode, std::string text, std::uint64_t count)
{
    if (kept[number] == mostOfAKind) {
        ++notKept[number];
        return false;
    }
    ++kept[number];
    found.push_back(
        {&FltFindingTable::of(number), inventory.path(), offset, opcode, "", std::move(text), count});
    return true;
}

void FltCheck::add(int number, std::uint64_t offset, int opcode, std::uint32_t node, std::string const& text)
{
    constexpr std::size_t notThere = SIZE_MAX;
    auto const [entry, isNew] = positions.try_emplace({number, node}, found.size());
    if (!isNew) {
        if (entry->second != notThere)
            ++found[entry->second].count;
    } else if (!addHere(number, static_cast<std::int64_t>(offset), opcode, text)) {
        entry->second = notThere;
    } else if (node != none) {
        found.back().node = inventory.pathOf(node);
    }
}

std::vector<FltFinding> FltCheck::findings() const
{
    std::vector<FltFinding> sorted = found;
    std::stable_sort(sorted.begin(), sorted.end(), [](FltFinding const& a, FltFinding const& b) {
        return std::tie(a.kind->number, a.offset) < std::tie(b.kind->number, b.offset);
    });
    return sorted;
}

void FltCheck::addOmission(std::string const& kind, std::uint64_t count)
{
    addHere(901, FltFinding::nowhere, 0, kind, count);
}

// Records

void FltCheck::checkRecords()
{
    auto const faultOffset = static_cast<std::int64_t>(inventory.faultOffset());
    std::string const rest =
        FltFraming::restFrom(inventory.faultOffset(), inventory.bytes()) + ", is left out";
    switch (inventory.fault()) {
    case FltFraming::Fault::none:
        break;
    case FltFraming::Fault::zeroLength:
        addHere(101, faultOffset, 0, rest);
        break;
    case FltFraming::Fault::pastEnd:
        addHere(102, faultOffset, 0, rest);
        break;
    case FltFraming::Fault::cutHead:
        addHere(103, faultOffset, 0, rest);
        break;
    }
    for (FltInventory::ShortRecord const& record : inventory.shortRecords)
        addHere(record.length < 4 ? 104 : 105, static_cast<std::int64_t>(record.offset), record.opcode,
                std::to_string(record.length) + " of " + std::to_string(record.leastLength) + " bytes");
    for (FltInventory::Complaint const& complaint : inventory.complaints)
        addHere(106, static_cast<std::int64_t>(complaint.offset), complaint.opcode, complaint.text);
    for (auto const& [opcode, facts] : inventory.opcodes)
        if (!FltOpcodeName::isKnown(opcode))
            addHere(107, static_cast<std::int64_t>(facts.first), opcode, "opcode " + std::to_string(opcode),
                    facts.count);
    checkTextTransfer();
}

/// A file that was transferred as text has no carriage return left. What held one holds a line feed now:
/// offsets that hit nothing, and indices that are there twice.
bool FltCheck::isTraceOfTextTransfer(std::int64_t number) const
{
    return lacksCarriageReturns && holdsLineFeed(number);
}

void FltCheck::checkTextTransfer()
{
    std::uint64_t traces = 0;
    std::uint64_t first = UINT64_MAX;
    auto const take = [&](std::int64_t number, std::uint64_t offset) {
        if (!isTraceOfTextTransfer(number))
            return;
        ++traces;
        first = std::min(first, offset);
    };
    for (FltInventory::LostOffset const& lost : inventory.lostOffsets)
        take(lost.value, lost.record);
    for (FltInventory::Palette const* const palette : {&inventory.textures, &inventory.materials})
        for (auto const& [index, entry] : *palette)
            if (entry.repetition != 0)
                take(index, entry.repetition);
    if (traces != 0)
        addHere(108, static_cast<std::int64_t>(first), 0,
                std::to_string(traces) + (traces == 1 ? " number" : " numbers") +
                    " with a line feed hit nothing, or are there twice");
}

// Geometry

void FltCheck::checkGeometry()
{
    checkLostOffsets();
    for (FltInventory::Face const& face : inventory.faces)
        checkFace(face);
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        checkMesh(mesh);
    bool const isEmpty = inventory.faces.empty() && inventory.meshes.empty() &&
                         inventory.references.empty() && inventory.opcodes.count(FltOpcode::text) == 0 &&
                         inventory.opcodes.count(FltOpcode::lightPoint) == 0;
    if (isEmpty)
        addHere(210, FltFinding::nowhere, 0, "no face, mesh, text, light point or external reference");
}

void FltCheck::checkLostOffsets()
{
    for (FltInventory::LostOffset const& lost : inventory.lostOffsets)
        if (!isTraceOfTextTransfer(lost.value))
            add(201, lost.record, FltOpcode::vertexList, inventory.faces[lost.face].node,
                "offset " + std::to_string(lost.value));
}

void FltCheck::checkFace(FltInventory::Face const& face)
{
    if (face.vertexCount == 0)
        add(203, face.offset, FltOpcode::face, face.node, "no vertices");
    else
        checkShape(face);
    checkTextureCoordinates(face);
}

void FltCheck::checkShape(FltInventory::Face const& face)
{
    std::vector<std::array<double, 3>> corners;
    bool isWhole = true;
    for (std::uint32_t i = 0; i < face.vertexCount; ++i) {
        std::uint32_t const vertex = inventory.faceVertices[face.firstVertex + i];
        if (vertex == none)
            continue;
        isWhole = isWhole && inventory.vertices[vertex].isWhole;
        corners.push_back(inventory.position(vertex));
    }
    if (corners.empty())
        return;
    FltFaceShape const shape = FltFaceShape::of(corners);
    if (!shape.isFinite || !isWhole)
        add(206, face.offset, FltOpcode::face, face.node, "a vertex of this face");
    else if (corners.size() < 3)
        return; // a point or a line
    else if (!shape.hasArea)
        add(202, face.offset, FltOpcode::face, face.node, std::to_string(corners.size()) + " vertices");
    else if (!shape.isConvex)
        add(204, face.offset, FltOpcode::face, face.node, std::to_string(corners.size()) + " vertices");
    else if (!shape.isFlat)
        add(205, face.offset, FltOpcode::face, face.node, std::to_string(corners.size()) + " vertices");
}

void FltCheck::checkTextureCoordinates(FltInventory::Face const& face)
{
    if (face.texture < 0)
        return;
    for (std::uint32_t i = 0; i < face.vertexCount; ++i) {
        std::uint32_t const vertex = inventory.faceVertices[face.firstVertex + i];
        if (vertex != none && !hasTextureCoordinates(inventory.vertices[vertex].opcode)) {
            add(207, face.offset, FltOpcode::face, face.node, "texture " + std::to_string(face.texture));
            return;
        }
    }
}

void FltCheck::checkMesh(FltInventory::Mesh const& mesh)
{
    if (mesh.poolVertices == 0 || mesh.primitives.empty())
        add(209, mesh.offset, FltOpcode::mesh, mesh.node,
            quoted(mesh.name) + (mesh.poolVertices == 0 ? " has no vertex pool" : " has no primitives"));
    else if (mesh.wholeVertices < mesh.poolVertices)
        add(106, mesh.offset, FltOpcode::mesh, mesh.node,
            "the vertex pool of " + quoted(mesh.name) + " holds " + std::to_string(mesh.wholeVertices) +
                " of " + std::to_string(mesh.poolVertices) + " vertices");
    for (FltInventory::Primitive const& primitive : mesh.primitives)
        if (mesh.poolVertices != 0 && primitive.badIndices != 0)
            add(208, primitive.offset, FltOpcode::mesh + 2, mesh.node,
                std::to_string(primitive.badIndices) + " of " + std::to_string(primitive.indexCount) +
                    " indices");
}

// Palettes

void FltCheck::checkPalettes()
{
    for (FltInventory::Face const& face : inventory.faces)
        checkSurface(face, FltOpcode::face);
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        checkSurface(mesh, FltOpcode::mesh);
    for (FltInventory::Instance const& light : inventory.lightSources)
        if (inventory.lights.count(light.number) == 0)
            add(306, inventory.nodes[light.node].offset, FltOpcode::lightSource, light.node,
                "light source " + std::to_string(light.number));
    checkRepetitions(inventory.textures, "texture");
    checkRepetitions(inventory.materials, "material");
    checkRepetitions(inventory.lineStyles, "line style");
    checkRepetitions(inventory.textureMappings, "texture mapping");
    checkRepetitions(inventory.lights, "light source");
}

void FltCheck::checkSurface(FltInventory::Surface const& surface, int opcode)
{
    auto const check = [&](int number, FltInventory::Palette const& palette, int index, char const* what) {
        if (index >= 0 && palette.count(index) == 0)
            add(number, surface.offset, opcode, surface.node, what + std::to_string(index));
    };
    check(301, inventory.textures, surface.texture, "texture ");
    check(301, inventory.textures, surface.detailTexture, "detail texture ");
    check(302, inventory.materials, surface.material, "material ");
    check(305, inventory.textureMappings, surface.mapping, "texture mapping ");
    if (surface.lineStyle != 0) // 0 is the usual line
        check(304, inventory.lineStyles, surface.lineStyle, "line style ");
    constexpr int firstRevisionOfIndices = 1500;
    constexpr int colors = 1024 * 128;
    bool const takesColorFromPalette = inventory.header.revision >= firstRevisionOfIndices &&
                                       !surface.hasPackedColor() && !surface.hasNoColor() &&
                                       surface.color != -1;
    if (takesColorFromPalette && (!inventory.hasColorPalette || surface.color < 0 || surface.color >= colors))
        add(303, surface.offset, opcode, surface.node,
            inventory.hasColorPalette ? "colour " + std::to_string(surface.color)
                                      : "there is no colour palette");
}

void FltCheck::checkRepetitions(FltInventory::Palette const& palette, char const* what)
{
    for (auto const& [index, entry] : palette)
        if (entry.repetition != 0 && !isTraceOfTextTransfer(index))
            addHere(307, static_cast<std::int64_t>(entry.repetition), 0,
                    std::string(what) + " " + std::to_string(index));
}

// Files

void FltCheck::checkFiles(FltDependencies const& dependencies)
{
    for (FltDependencies::Texture const& texture : dependencies.textures()) {
        if (texture.database != inventory.path() || texture.uses == 0)
            continue;
        auto const offset = static_cast<std::int64_t>(texture.offset);
        if (texture.path.empty())
            addHere(401, offset, FltOpcode::texturePattern, quoted(texture.name));
        else if (texture.isElsewhere)
            addHere(405, offset, FltOpcode::texturePattern,
                    quoted(texture.name) + " is found as " + texture.path);
    }
    for (FltDependencies::Reference const& reference : dependencies.references()) {
        using State = FltDependencies::State;
        bool const isOwn = reference.database == inventory.path();
        int const number = reference.state == State::cycle                 ? 403
                           : reference.state == State::tooDeep             ? 406
                           : isOwn && reference.state == State::missing    ? 402
                           : isOwn && reference.state == State::unreadable ? 404
                                                                           : 0;
        bool const isAdded =
            number != 0 &&
            addHere(number, static_cast<std::int64_t>(reference.offset), FltOpcode::externalReference,
                    reference.problem.empty() ? quoted(reference.name) : reference.problem);
        if (isAdded)
            found.back().file = reference.database;
    }
    for (FltDependencies::DeepLevels const& levels : dependencies.deepLevels())
        if (addHere(510, static_cast<std::int64_t>(levels.offset), levels.opcode,
                    std::to_string(FltLimits::hierarchyDepth) +
                        " levels with those of the files that lead here"))
            found.back().file = levels.database;
}

// Hierarchy

void FltCheck::checkHierarchy()
{
    checkLevels();
    checkNames();
    checkInstances();
    checkReferencesOfInstances();
}

void FltCheck::checkLevels()
{
    for (FltInventory::Imbalance const& imbalance : inventory.imbalances) {
        using Kind = FltInventory::Imbalance::Kind;
        auto const offset = static_cast<std::int64_t>(imbalance.offset);
        if (imbalance.kind == Kind::popWithoutPush)
            addHere(501, offset, FltOpcode::popLevel, "");
        else if (imbalance.kind == Kind::neverClosed)
            addHere(502, offset, FltOpcode::pushLevel, "");
        else
            addHere(503, offset, FltOpcode::pushLevel, "");
    }
    for (FltInventory::Stray const& stray : inventory.strays)
        addHere(511, static_cast<std::int64_t>(stray.offset), stray.opcode, FltOpcodeName::of(stray.opcode));
    for (std::uint32_t i = 0; i < inventory.nodes.size(); ++i) {
        FltInventory::Node const& node = inventory.nodes[i];
        if (node.depth == FltLimits::hierarchyDepth)
            add(510, node.offset, node.opcode, i, std::to_string(node.depth) + " levels");
        bool const isToHoldSomething = node.opcode == FltOpcode::group || node.opcode == FltOpcode::object ||
                                       node.opcode == FltOpcode::lod ||
                                       node.opcode == FltOpcode::switchNode || node.opcode == FltOpcode::dof;
        if (isToHoldSomething && node.children == 0 && node.faces == 0)
            add(504, node.offset, node.opcode, i, FltOpcodeName::of(node.opcode));
    }
}

void FltCheck::checkNames()
{
    std::unordered_map<std::string, std::vector<std::uint32_t>> nodesOfName;
    for (std::uint32_t i = 1; i < inventory.nodes.size(); ++i) {
        FltInventory::Node const& node = inventory.nodes[i];
        bool const isNumbered = node.opcode == FltOpcode::instanceReference ||
                                node.opcode == FltOpcode::instanceDefinition ||
                                node.opcode == FltOpcode::externalReference;
        if (!isNumbered && !node.name.empty())
            nodesOfName[node.name].push_back(i);
    }
    std::uint32_t first = none; // the second node of a name, the first such one in the file
    std::uint64_t names = 0;
    for (auto const& [name, nodes] : nodesOfName) {
        if (nodes.size() < 2)
            continue;
        ++names;
        first = std::min(first, nodes[1]);
    }
    if (names == 0)
        return;
    FltInventory::Node const& node = inventory.nodes[first];
    add(505, node.offset, node.opcode, first,
        quoted(node.name) + (names > 1 ? " and " + std::to_string(names - 1) + " further names" : ""));
}

void FltCheck::checkInstances()
{
    std::unordered_map<int, std::uint64_t> uses;
    for (FltInventory::Instance const& reference : inventory.instanceReferences)
        ++uses[reference.number];
    std::unordered_map<int, std::uint64_t> definitions;
    for (FltInventory::Instance const& definition : inventory.instanceDefinitions) {
        FltInventory::Node const& node = inventory.nodes[definition.node];
        std::string const what = "instance " + std::to_string(definition.number);
        if (++definitions[definition.number] > 1)
            add(508, node.offset, node.opcode, definition.node, what);
        else if (uses.count(definition.number) == 0)
            add(507, node.offset, node.opcode, definition.node, what);
    }
    for (FltInventory::Instance const& reference : inventory.instanceReferences)
        if (definitions.count(reference.number) == 0)
            add(506, inventory.nodes[reference.node].offset, FltOpcode::instanceReference, reference.node,
                "instance " + std::to_string(reference.number));
}

/// Instances that lead to themselves, over any number of others.
void FltCheck::checkReferencesOfInstances()
{
    // Which definition a node stands in: nodes come after those above them.
    std::vector<int> definitionOf(inventory.nodes.size(), -1);
    std::size_t next = 0;
    std::unordered_map<int, std::vector<FltInventory::Instance>> refers;
    std::size_t nextReference = 0;
    for (std::uint32_t i = 1; i < inventory.nodes.size(); ++i) {
        definitionOf[i] = definitionOf[inventory.nodes[i].parent];
        auto const& definitions = inventory.instanceDefinitions;
        if (next < definitions.size() && definitions[next].node == i)
            definitionOf[i] = definitions[next++].number;
        auto const& references = inventory.instanceReferences;
        if (nextReference < references.size() && references[nextReference].node == i)
            refers[definitionOf[i]].push_back(references[nextReference++]);
    }
    // Depth first, each definition once: a reference to one that is still open closes a circle.
    enum class State { open, done };
    std::unordered_map<int, State> states;
    struct Step {
        int number;
        std::size_t next;
    };
    for (auto const& start : refers) {
        if (start.first < 0 || states.count(start.first) != 0)
            continue;
        std::vector<Step> way{{start.first, 0}};
        states[start.first] = State::open;
        while (!way.empty()) {
            auto const inside = refers.find(way.back().number);
            if (inside == refers.end() || way.back().next == inside->second.size()) {
                states[way.back().number] = State::done;
                way.pop_back();
                continue;
            }
            FltInventory::Instance const& reference = inside->second[way.back().next++];
            auto const [state, isNew] = states.try_emplace(reference.number, State::open);
            if (isNew)
                way.push_back({reference.number, 0});
            else if (state->second == State::open)
                add(509, inventory.nodes[reference.node].offset, FltOpcode::instanceReference, reference.node,
                    "instance " + std::to_string(reference.number));
        }
    }
}

// Visibility

void FltCheck::checkVisibility()
{
    checkRanges();
    checkSwitches();
    checkDegreesOfFreedom();
    for (FltInventory::Matrix const& matrix : inventory.matrices)
        if (!(std::abs(matrix.determinant) > 0)) // also not a number
            add(606, matrix.offset, FltOpcode::matrix, matrix.node, "");
}

void FltCheck::checkRanges()
{
    struct Range {
        double near, far;
    };
    std::vector<Range> seen(inventory.nodes.size(),
                            {0, HUGE_VAL}); // where nodes are seen, by those above them
    std::size_t next = 0;
    for (std::uint32_t i = 1; i < inventory.nodes.size(); ++i) {
        FltInventory::Node const& node = inventory.nodes[i];
        seen[i] = seen[node.parent];
        if (next == inventory.levelsOfDetail.size() || inventory.levelsOfDetail[next].node != i)
            continue;
        FltInventory::LevelOfDetail const& lod = inventory.levelsOfDetail[next++];
        std::string const text = "from " + textOf(lod.switchOut) + " to " + textOf(lod.switchIn);
        bool const isFinite = std::isfinite(lod.switchIn) && std::isfinite(lod.switchOut) &&
                              std::isfinite(lod.centre[0]) && std::isfinite(lod.centre[1]) &&
                              std::isfinite(lod.centre[2]);
        bool const isAlwaysSeen = lod.switchIn == 0 && lod.switchOut == 0;
        if (!isFinite) {
            add(607, node.offset, node.opcode, i, text);
        } else if (!isAlwaysSeen && lod.switchIn <= lod.switchOut) {
            add(601, node.offset, node.opcode, i, text);
        } else if (!isAlwaysSeen) {
            bool const wasSeen = seen[i].near < seen[i].far;
            seen[i] = {std::max(seen[i].near, lod.switchOut), std::min(seen[i].far, lod.switchIn)};
            if (wasSeen && seen[i].near >= seen[i].far)
                add(602, node.offset, node.opcode, i, text);
        }
    }
}

void FltCheck::checkSwitches()
{
    for (FltInventory::Switch const& one : inventory.switches) {
        FltInventory::Node const& node = inventory.nodes[one.node];
        if (one.currentMask < 0 || one.currentMask >= one.maskCount)
            add(603, node.offset, node.opcode, one.node,
                "mask " + std::to_string(one.currentMask) + " of " + std::to_string(one.maskCount));
        // Faces directly below it are children as well, but which of them stands where isn't known any more.
        if (node.faces != 0 || one.wordsPerMask <= 0 || one.words.empty())
            continue;
        auto const wordsPerMask = static_cast<std::size_t>(one.wordsPerMask);
        FltInventory::Switch any;
        any.wordsPerMask = one.wordsPerMask;
        any.words.resize(std::min(wordsPerMask, one.words.size()));
        for (std::size_t i = 0; i < one.words.size(); ++i)
            any.words[i % wordsPerMask] |= one.words[i];
        for (std::uint32_t child = 0; child < node.children; ++child)
            if (!any.shows(0, child))
                add(604, node.offset, node.opcode, one.node, "child " + std::to_string(child));
    }
}

void FltCheck::checkDegreesOfFreedom()
{
    for (FltInventory::DegreeOfFreedom const& dof : inventory.degreesOfFreedom)
        for (std::size_t i = 0; i < dof.ranges.size(); ++i) {
            auto const& range = dof.ranges[i];
            bool const isImpossible =
                range.isLimited && (range.least > range.most || range.current < range.least ||
                                    range.current > range.most || std::isnan(range.current));
            FltInventory::Node const& node = inventory.nodes[dof.node];
            if (isImpossible)
                add(605, node.offset, node.opcode, dof.node,
                    std::string(FltInventory::DegreeOfFreedom::nameOf(i)) + " is " + textOf(range.current) +
                        ", between " + textOf(range.least) + " and " + textOf(range.most));
        }
}

// The exact conversion

void FltCheck::checkExactConversion()
{
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        add(801, mesh.offset, FltOpcode::mesh, mesh.node, quoted(mesh.name));
    checkExactFaces();
    checkExactSwitches();
    checkExactInstances();
    checkExactOpcodes();
}

void FltCheck::checkExactFaces()
{
    constexpr std::uint64_t roomForVertices = 100'000;
    for (int opcode = FltOpcode::vertexColor; opcode <= FltOpcode::vertexColorUv; ++opcode) {
        auto const facts = inventory.opcodes.find(opcode);
        if (facts != inventory.opcodes.end() && facts->second.count > roomForVertices)
            addHere(802, static_cast<std::int64_t>(facts->second.first), opcode,
                    std::to_string(facts->second.count) + " vertices");
    }
    std::map<std::pair<std::uint32_t, int>, bool> hasBase; // of a node, by the form of the vertices
    for (FltInventory::Face const& face : inventory.faces) {
        int opcode = 0;
        bool isMixed = false, isTextured = true;
        for (std::uint32_t i = 0; i < face.vertexCount; ++i) {
            std::uint32_t const vertex = inventory.faceVertices[face.firstVertex + i];
            int const form = vertex != none ? inventory.vertices[vertex].opcode : opcode;
            isMixed = isMixed || (opcode != 0 && form != opcode);
            isTextured = isTextured && form >= FltOpcode::vertexColorNormalUv;
            opcode = form;
        }
        if (isMixed && !isTextured)
            add(808, face.offset, FltOpcode::face, face.node, std::to_string(face.vertexCount) + " vertices");
        if (face.vertexCount == 1 || face.vertexCount == 2)
            add(809, face.offset, FltOpcode::face, face.node, std::to_string(face.vertexCount) + " vertices");
        if (face.templateMode == 2 || face.templateMode == 4)
            add(813, face.offset, FltOpcode::face, face.node,
                "template " + std::to_string(face.templateMode));
        if ((face.flags >> 26 & 1) != 0)
            add(814, face.offset, FltOpcode::face, face.node, "");
        if (face.vertexCount != 0)
            hasBase[{face.node, opcode}] |= !face.isSubface;
    }
    for (auto const& [key, isThere] : hasBase)
        if (!isThere && key.first != none)
            add(803, inventory.nodes[key.first].offset, inventory.nodes[key.first].opcode, key.first, "");
}

void FltCheck::checkExactSwitches()
{
    constexpr std::size_t idLength = 8;
    for (FltInventory::Switch const& one : inventory.switches) {
        FltInventory::Node const& node = inventory.nodes[one.node];
        std::string const why = node.name.size() > idLength ? "long id"
                                : one.currentMask == 10     ? "mask 10"
                                : node.children > 32        ? std::to_string(node.children) + " children"
                                                            : "";
        if (!why.empty())
            add(807, node.offset, node.opcode, one.node, why);
    }
}

void FltCheck::checkExactInstances()
{
    std::unordered_map<int, std::uint64_t> definedAt;
    for (FltInventory::Instance const& definition : inventory.instanceDefinitions) {
        FltInventory::Node const& node = inventory.nodes[definition.node];
        definedAt.try_emplace(definition.number, node.offset);
        add(805, node.offset, node.opcode, definition.node, "instance " + std::to_string(definition.number));
    }
    for (FltInventory::Instance const& reference : inventory.instanceReferences) {
        FltInventory::Node const& node = inventory.nodes[reference.node];
        auto const definition = definedAt.find(reference.number);
        bool const isSeen =
            node.parent == 0 && definition != definedAt.end() && definition->second < node.offset;
        if (!isSeen)
            add(804, node.offset, node.opcode, reference.node,
                "instance " + std::to_string(reference.number));
    }
}

void FltCheck::checkExactOpcodes()
{
    bool const hasMatrices = inventory.opcodes.count(FltOpcode::matrix) != 0;
    for (auto const& [opcode, facts] : inventory.opcodes) {
        FltOpcodeRow const* const row = FltOpcodeTable::find(opcode);
        if (row == nullptr || row->finding == 0 || (row->finding == 815 && hasMatrices))
            continue;
        addHere(row->finding, static_cast<std::int64_t>(facts.first), opcode, FltOpcodeName::of(opcode),
                facts.count);
    }
}
