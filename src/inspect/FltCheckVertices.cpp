#include "inspect/FltCheckVertices.h"

#include "messages/FltFindingNumber.h"
#include "model/FltRecordEntries.h"
#include "records/FltOpcode.h"
#include "records/FltRecordVertex.h"
#include "records/FltVertexListEntry.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace Number = FltFindingNumber;

namespace
{

/// Calls an action for each entry of a list.
template <class Entry, class Action>
void forEachEntry(FltRecordView const& record, Action action)
{
    Entry entry;
    FltRecordEntries const entries(record, entry);
    for (std::size_t i = 0; i < entries.countWhole(); ++i) {
        entries.decode(i, entry);
        action(entry);
    }
}

} // namespace

void FltCheckVertices::check()
{
    isUsed.resize(checked.paletteVertices);
    takeLists();
    checkUses();
    checkLength();
}

void FltCheckVertices::takeLists()
{
    for (FltModelTree::Number list = 1; list < checked.model.tree.getCount(); ++list) {
        FltRecordView const& record = checked.recordOf(list);
        if (record.opcode == FltOpcode::vertexList)
            forEachEntry<FltVertexListEntry>(
                record, [&](FltVertexListEntry const& entry) { takeOffset(entry.offset, list); });
        else if (record.opcode == FltOpcode::morphVertexList)
            forEachEntry<FltMorphVertexListEntry>(record, [&](FltMorphVertexListEntry const& entry) {
                takeOffset(entry.from, list);
                takeOffset(entry.offset, list);
            });
    }
}

/// Places of what faces name are judged with their other corners.
void FltCheckVertices::takeOffset(std::int64_t offset, FltModelTree::Number list)
{
    std::uint32_t const vertex = checked.model.vertices.find(offset);
    if (vertex == FltVertexStore::none) {
        hasLostOffset = true;
        return;
    }
    isUsed[vertex] = true;
    FltModelTree::Number const owner = checked.parentOf(list);
    bool const isOfFace = owner != FltModelTree::root && checked.recordOf(owner).opcode == FltOpcode::face;
    if (!isOfFace && !checked.model.vertices.hasUsablePlace(vertex))
        findings.add(Number::unusablePlace, checked.recordOf(list).offset,
                     static_cast<int>(checked.recordOf(list).opcode), checked.nodeOf(list),
                     "a vertex of this list");
}

/// Where an offset hits nothing, it may have meant a vertex that seems to be unused.
void FltCheckVertices::checkUses()
{
    auto const unused = static_cast<std::uint64_t>(std::count(isUsed.begin(), isUsed.end(), false));
    auto const palette = inventory.opcodes.find(FltOpcode::vertexPalette);
    if (unused == 0 || hasLostOffset || !checked.isWhole() || palette == inventory.opcodes.end())
        return;
    findings.addHere(Number::unusedVertices, static_cast<std::int64_t>(palette->second.first),
                     FltOpcode::vertexPalette,
                     std::to_string(unused) + " of " + std::to_string(isUsed.size()));
}

void FltCheckVertices::checkLength()
{
    auto const palette = inventory.opcodes.find(FltOpcode::vertexPalette);
    if (palette == inventory.opcodes.end() || palette->second.count != 1 ||
        inventory.fault() != FltFraming::Fault::none)
        return;
    std::uint64_t bytes = palette->second.bytes;
    for (int opcode = FltOpcode::vertexColor; opcode <= FltOpcode::vertexColorUv; ++opcode)
        if (auto const facts = inventory.opcodes.find(opcode); facts != inventory.opcodes.end())
            bytes += facts->second.bytes;
    auto const offset = static_cast<std::size_t>(palette->second.first);
    FltRecordView const record{inventory.file().data() + offset,
                               static_cast<std::uint32_t>(palette->second.bytes), FltOpcode::vertexPalette,
                               offset};
    FltDecoded<FltRecordVertexPalette> const head(record);
    if (head.vertexPaletteTotalLength != bytes && !transfer.hasTrace(head.vertexPaletteTotalLength))
        findings.addHere(
            Number::wrongPaletteLength, static_cast<std::int64_t>(offset), FltOpcode::vertexPalette,
            std::to_string(head.vertexPaletteTotalLength) + " bytes instead of " + std::to_string(bytes));
}
