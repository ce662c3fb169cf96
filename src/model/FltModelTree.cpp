#include "model/FltModelTree.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcodeTable.h"

#include <algorithm>

using Part = FltOpcodeRow::Part;

FltModelTree::Place FltModelTree::add(FltRecordView const& record)
{
    Part const part = FltOpcodeTable::partOf(static_cast<int>(record.opcode));
    if (part == Part::pushExtension || part == Part::popExtension) {
        extensions = std::max(0, extensions + (part == Part::pushExtension ? 1 : -1));
        return Place::taken;
    }
    if (extensions > 0)
        return Place::leftOut;
    if (part == Part::push) {
        push(record);
    } else if (part == Part::pop) {
        pop();
    } else if (tooDeep > 0) {
        return Place::leftOut;
    } else if (part != Part::ancillary) {
        addNode(record);
    } else if (isAfterPop) {
        return Place::nowhere;
    } else {
        records.push_back(record);
        return Place::taken;
    }
    isAfterPop = part == Part::pop;
    return Place::taken;
}

void FltModelTree::addNode(FltRecordView const& record)
{
    Node node;
    node.record = static_cast<std::uint32_t>(records.size());
    node.isSubface = openSubfaces.back();
    records.push_back(record);
    last = static_cast<Number>(nodes.size());
    Node& parent = nodes[static_cast<std::size_t>(open.back())];
    if (parent.lastChild == none)
        parent.firstChild = last;
    else
        nodes[static_cast<std::size_t>(parent.lastChild)].nextSibling = last;
    parent.lastChild = last;
    nodes.push_back(node);
}

void FltModelTree::push(FltRecordView const& record)
{
    if (tooDeep > 0 || levelsAbove + static_cast<int>(open.size()) >= FltLimits::hierarchyDepth) {
        ++tooDeep;
        leaveOutFrom(record);
        return;
    }
    open.push_back(last);
    openSubfaces.push_back(record.opcode == FltOpcode::pushSubface);
}

void FltModelTree::leaveOutFrom(FltRecordView const& record)
{
    if (!whole)
        return;
    whole = false;
    FltWarningMessageConsole::setPosition(record.offset, static_cast<int>(record.opcode));
    FltWarningMessageConsole::notifyDamage("Levels that are nested too deeply are left out");
}

/// The level belongs to the node before it; a level after that one belongs to the same node.
void FltModelTree::pop()
{
    if (tooDeep > 0) {
        --tooDeep;
        return;
    }
    last = open.back();
    if (open.size() == 1) {
        FltWarningMessageConsole::notifyGuard("A level ends that never began");
        return;
    }
    open.pop_back();
    openSubfaces.pop_back();
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
