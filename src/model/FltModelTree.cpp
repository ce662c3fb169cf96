#include "model/FltModelTree.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcodeTable.h"

#include <algorithm>

using Part = FltOpcodeRow::Part;

FltModelTree::Place FltModelTree::add(FltRecordView const& record)
{
    switch (levels.take(record)) {
    case FltLevelStep::node:
        addNode(record);
        break;
    case FltLevelStep::ancillary:
        records.push_back(record);
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
    node.isSubface = levels.isSubface();
    records.push_back(record);
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

FltRecordView const* FltModelTree::ancillaryBegin(Number number) const
{
    return records.data() + (number == root ? 0 : nodes[static_cast<std::size_t>(number)].record + 1);
}

FltRecordView const* FltModelTree::ancillaryEnd(Number number) const
{
    FltRecordView const* const end = records.data() + records.size();
    FltRecordView const* record = ancillaryBegin(number);
    while (record != end && FltOpcodeTable::partOf(static_cast<int>(record->opcode)) == Part::ancillary)
        ++record;
    return record;
}

FltRecordView const* FltModelTree::ancillary(Number number, int opcode) const
{
    FltRecordView const* const end = ancillaryEnd(number);
    FltRecordView const* const found =
        std::find_if(ancillaryBegin(number), end, [opcode](FltRecordView const& record) {
            return static_cast<int>(record.opcode) == opcode;
        });
    return found != end ? found : nullptr;
}
