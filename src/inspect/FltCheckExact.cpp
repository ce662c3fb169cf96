#include "inspect/FltCheckExact.h"

#include "messages/FltFindingNumber.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "records/FltOpcodeTable.h"

#include <map>
#include <string>
#include <unordered_map>
#include <utility>

namespace Number = FltFindingNumber;

namespace
{

constexpr std::uint32_t none = FltInventory::none;

} // namespace

void FltCheckExact::check()
{
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        findings.add(Number::lostMesh, mesh.offset, FltOpcode::mesh, mesh.node, quoted(mesh.name));
    for (FltInventory::LevelOfDetail const& lod : inventory.levelsOfDetail)
        if (lod.switchIn == 0 && lod.switchOut == 0)
            findings.add(Number::lostEverSeenLevel, inventory.nodes[lod.node].offset,
                         inventory.nodes[lod.node].opcode, lod.node, "");
    checkExactFaces();
    checkExactSwitches();
    checkExactInstances();
    checkExactOpcodes();
}

void FltCheckExact::checkExactFaces()
{
    constexpr std::uint64_t roomForVertices = 100'000;
    for (int opcode = FltOpcode::vertexColor; opcode <= FltOpcode::vertexColorUv; ++opcode) {
        auto const facts = inventory.opcodes.find(opcode);
        if (facts != inventory.opcodes.end() && facts->second.count > roomForVertices)
            findings.addHere(Number::tooManyVertices, static_cast<std::int64_t>(facts->second.first), opcode,
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
            findings.add(Number::mixedVertices, face.offset, FltOpcode::face, face.node,
                         std::to_string(face.vertexCount) + " vertices");
        if (face.vertexCount == 1 || face.vertexCount == 2)
            findings.add(Number::pointOrLine, face.offset, FltOpcode::face, face.node,
                         std::to_string(face.vertexCount) + " vertices");
        if (face.templateMode == 2 || face.templateMode == 4)
            findings.add(Number::fixedBillboard, face.offset, FltOpcode::face, face.node,
                         "template " + std::to_string(face.templateMode));
        if ((face.flags >> 26 & 1) != 0)
            findings.add(Number::drawnHiddenFace, face.offset, FltOpcode::face, face.node, "");
        if (face.vertexCount != 0)
            hasBase[{face.node, opcode}] |= !face.isSubface;
    }
    for (auto const& [key, isThere] : hasBase)
        if (!isThere && key.first != none)
            findings.add(Number::lostSubfaces, inventory.nodes[key.first].offset,
                         inventory.nodes[key.first].opcode, key.first, "");
}

void FltCheckExact::checkExactSwitches()
{
    constexpr std::size_t idLength = 8;
    for (FltInventory::Switch const& one : inventory.switches) {
        FltInventory::Node const& node = inventory.nodes[one.node];
        std::string const why = node.name.size() > idLength ? "long id"
                                : one.currentMask == 10     ? "mask 10"
                                : node.children > 32        ? std::to_string(node.children) + " children"
                                                            : "";
        if (!why.empty())
            findings.add(Number::wrongChildren, node.offset, node.opcode, one.node, why);
    }
}

void FltCheckExact::checkExactInstances()
{
    std::unordered_map<int, std::uint64_t> definedAt;
    for (FltInventory::Instance const& definition : inventory.instanceDefinitions) {
        FltInventory::Node const& node = inventory.nodes[definition.node];
        definedAt.try_emplace(definition.number, node.offset);
        findings.add(Number::drawnDefinition, node.offset, node.opcode, definition.node,
                     "instance " + std::to_string(definition.number));
    }
    for (FltInventory::Instance const& reference : inventory.instanceReferences) {
        FltInventory::Node const& node = inventory.nodes[reference.node];
        auto const definition = definedAt.find(reference.number);
        bool const isSeen =
            node.parent == 0 && definition != definedAt.end() && definition->second < node.offset;
        if (!isSeen)
            findings.add(Number::passedOverInstance, node.offset, node.opcode, reference.node,
                         "instance " + std::to_string(reference.number));
    }
}

void FltCheckExact::checkExactOpcodes()
{
    bool const hasMatrices = inventory.opcodes.count(FltOpcode::matrix) != 0;
    for (auto const& [opcode, facts] : inventory.opcodes) {
        FltOpcodeRow const* const row = FltOpcodeTable::find(opcode);
        if (row == nullptr || row->finding == 0 ||
            (row->finding == Number::lostTransformation && hasMatrices))
            continue;
        findings.addHere(row->finding, static_cast<std::int64_t>(facts.first), opcode,
                         FltOpcodeName::of(opcode), facts.count);
    }
}
