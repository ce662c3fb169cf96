#include "inspect/FltCheckHierarchy.h"

#include "messages/FltFindingNumber.h"
#include "messages/FltLimits.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

namespace Number = FltFindingNumber;

namespace
{

constexpr std::uint32_t none = FltInventory::none;

} // namespace

void FltCheckHierarchy::check()
{
    checkLevels();
    checkNames();
    checkInstances();
    checkReferencesOfInstances();
}

void FltCheckHierarchy::checkLevels()
{
    for (FltInventory::Imbalance const& imbalance : inventory.imbalances) {
        using Kind = FltInventory::Imbalance::Kind;
        auto const offset = static_cast<std::int64_t>(imbalance.offset);
        if (imbalance.kind == Kind::popWithoutPush)
            findings.addHere(Number::popWithoutPush, offset, FltOpcode::popLevel, "");
        else if (imbalance.kind == Kind::neverClosed)
            findings.addHere(Number::neverClosed, offset, FltOpcode::pushLevel, "");
        else
            findings.addHere(Number::pushWithoutNode, offset, FltOpcode::pushLevel, "");
    }
    for (FltInventory::Stray const& stray : inventory.strays)
        findings.addHere(Number::strayRecord, static_cast<std::int64_t>(stray.offset), stray.opcode,
                         FltOpcodeName::of(stray.opcode));
    for (FltInventory::TooDeep const& node : inventory.tooDeep)
        findings.add(Number::tooDeepLevels, node.offset, node.opcode, node.node,
                     std::to_string(FltLimits::hierarchyDepth) + " levels");
    for (std::uint32_t i = 0; i < inventory.nodes.size(); ++i) {
        FltInventory::Node const& node = inventory.nodes[i];
        bool const isToHoldSomething = node.opcode == FltOpcode::group || node.opcode == FltOpcode::object ||
                                       node.opcode == FltOpcode::lod ||
                                       node.opcode == FltOpcode::switchNode || node.opcode == FltOpcode::dof;
        if (isToHoldSomething && node.children == 0 && node.faces == 0)
            findings.add(Number::emptyGroup, node.offset, node.opcode, i, FltOpcodeName::of(node.opcode));
    }
}

void FltCheckHierarchy::checkNames()
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
    findings.add(Number::repeatedName, node.offset, node.opcode, first,
                 quoted(node.name) + (names == 1   ? ""
                                      : names == 2 ? " and one further name"
                                                   : " and " + std::to_string(names - 1) + " further names"));
}

void FltCheckHierarchy::checkInstances()
{
    std::unordered_map<int, std::uint64_t> uses;
    for (FltInventory::Instance const& reference : inventory.instanceReferences)
        ++uses[reference.number];
    std::unordered_map<int, std::uint64_t> definitions;
    for (FltInventory::Instance const& definition : inventory.instanceDefinitions) {
        FltInventory::Node const& node = inventory.nodes[definition.node];
        std::string const what = "instance " + std::to_string(definition.number);
        if (++definitions[definition.number] > 1)
            findings.add(Number::repeatedDefinition, node.offset, node.opcode, definition.node, what);
        else if (uses.count(definition.number) == 0)
            findings.add(Number::unusedDefinition, node.offset, node.opcode, definition.node, what);
    }
    for (FltInventory::Instance const& reference : inventory.instanceReferences)
        if (definitions.count(reference.number) == 0)
            findings.add(Number::undefinedInstance, inventory.nodes[reference.node].offset,
                         FltOpcode::instanceReference, reference.node,
                         "instance " + std::to_string(reference.number));
}

/// Instances that lead to themselves, over any number of others.
void FltCheckHierarchy::checkReferencesOfInstances()
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
                findings.add(Number::circularInstance, inventory.nodes[reference.node].offset,
                             FltOpcode::instanceReference, reference.node,
                             "instance " + std::to_string(reference.number));
        }
    }
}
