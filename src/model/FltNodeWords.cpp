#include "model/FltNodeWords.h"

#include "records/FltOpcode.h"

#include <algorithm>

using Number = FltModelTree::Number;

namespace
{

bool hasId(FltRecordView const& record)
{
    return record.opcode != FltOpcode::instanceReference && record.opcode != FltOpcode::instanceDefinition;
}

std::string shortNameOf(FltRecordView const& record)
{
    if (record.opcode != FltOpcode::externalReference)
        return record.textAt(4, 8);
    std::string name = record.textAt(4, 200);
    name.erase(0, name.find_last_of("/\\") + 1);
    return name.substr(0, name.rfind('.'));
}

/// The first record of an opcode that says more about a node; null if there is none.
FltRecordView const* find(FltModelTree const& tree, Number number, std::uint32_t opcode)
{
    FltRecordView const* const end = tree.ancillaryEnd(number);
    FltRecordView const* const found =
        std::find_if(tree.ancillaryBegin(number), end,
                     [opcode](FltRecordView const& record) { return record.opcode == opcode; });
    return found != end ? found : nullptr;
}

} // namespace

std::string FltNodeWords::nameOf(FltModelTree const& tree, Number number)
{
    if (FltRecordView const* const longId = find(tree, number, FltOpcode::longID))
        return longId->textAt(4);
    FltRecordView const& record = tree.recordOf(number);
    return hasId(record) ? shortNameOf(record) : std::string();
}

std::vector<std::string> FltNodeWords::commentsOf(FltModelTree const& tree, Number number)
{
    std::vector<std::string> comments;
    if (tree.recordOf(number).opcode == FltOpcode::text)
        return comments;
    FltRecordView const* const end = tree.ancillaryEnd(number);
    for (FltRecordView const* each = tree.ancillaryBegin(number); each != end; ++each)
        if (each->opcode == FltOpcode::comment)
            comments.push_back(each->textAt(4));
    return comments;
}

std::string FltNodeWords::textOf(FltModelTree const& tree, Number number)
{
    FltRecordView const* const comment = find(tree, number, FltOpcode::comment);
    return comment != nullptr ? comment->textAt(4) : std::string();
}
