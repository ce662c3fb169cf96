#include "model/FltModelTree.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcodeTable.h"

using Part = FltOpcodeRow::Part;

FltModelTree::Place FltModelTree::add(FltRecordView const& record)
{
    switch (levels.take(record)) {
    case FltLevelStep::node:
        addNode(record);
        break;
    case FltLevelStep::ancillary:
        records.add(record);
        break;
    case FltLevelStep::openedTooDeep:
        leaveOutFrom(record);
        break;
    case FltLevelStep::closedNothing:
        FltWarningMessageConsole::notifyGuard("A level ends that never began");
        break;
    case FltLevelStep::inExtension:
    case FltLevelStep::tooDeep:
        return Place::leftOut;
    case FltLevelStep::nowhere:
        return Place::nowhere;
    case FltLevelStep::opened:
    case FltLevelStep::openedNothing:
    case FltLevelStep::closed:
    case FltLevelStep::closedOther:
    case FltLevelStep::extension:
    case FltLevelStep::closedNoExtension:
        break;
    }
    return Place::taken;
}

void FltModelTree::addNode(FltRecordView const& record)
{
    Node node;
    node.record = static_cast<std::uint32_t>(records.size());
    records.add(record);
    auto const number = static_cast<Number>(nodes.size());
    levels.setLast(number);
    Node& parent = nodes[static_cast<std::size_t>(levels.getParent())];
    if (parent.lastChild == none)
        parent.firstChild = number;
    else
        nodes[static_cast<std::size_t>(parent.lastChild)].nextSibling = number;
    parent.lastChild = number;
    nodes.push_back(node);
}

void FltModelTree::leaveOutFrom(FltRecordView const& record)
{
    if (!whole)
        return;
    whole = false;
    FltWarningMessageConsole::setPosition(record.offset, static_cast<int>(record.opcode));
    FltWarningMessageConsole::notifyDamage("Levels that are nested too deeply are left out");
}

std::size_t FltModelTree::ancillaryBegin(Number number) const
{
    return number == root ? 0 : std::size_t(nodes[static_cast<std::size_t>(number)].record) + 1;
}

bool FltModelTree::isAncillaryAt(std::size_t record) const
{
    return record < records.size() && FltOpcodeTable::partOf(records.opcodeOf(record)) == Part::ancillary;
}

FltRecordPlaces::Range FltModelTree::ancillaries(Number number) const
{
    std::size_t const begin = ancillaryBegin(number);
    std::size_t end = begin;
    while (isAncillaryAt(end))
        ++end;
    return {records, begin, end};
}

std::optional<FltRecordView> FltModelTree::ancillary(Number number, int opcode) const
{
    for (std::size_t record = ancillaryBegin(number); isAncillaryAt(record); ++record)
        if (records.opcodeOf(record) == opcode)
            return records[record];
    return std::nullopt;
}
