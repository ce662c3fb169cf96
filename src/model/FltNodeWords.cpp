#include "model/FltNodeWords.h"

#include "model/FltReferencedFile.h"
#include "records/FltOpcode.h"
#include "records/FltRecordComment.h"
#include "records/FltRecordExternalReference.h"
#include "records/FltRecordId.h"
#include "records/FltRecordLongID.h"

#include <cstring>

using Number = FltModelTree::Number;

namespace
{

bool hasId(FltRecordView const& record)
{
    return record.opcode != FltOpcode::instanceReference && record.opcode != FltOpcode::instanceDefinition;
}

/// The characters up to the first zero, or all of them.
template <std::size_t size>
std::string textIn(char const (&characters)[size])
{
    return {characters, ::strnlen(characters, size)};
}

std::string commentIn(FltRecordView const& record)
{
    return FltDecoded<FltRecordComment>(record).textDescription.get();
}

std::string shortNameOf(FltRecordView const& record)
{
    if (record.opcode != FltOpcode::externalReference)
        return FltNodeWords::idIn(record);
    std::string name =
        FltReferencedFile::fileOf(textIn(FltDecoded<FltRecordExternalReference>(record).asciiPath));
    name.erase(0, name.find_last_of("/\\") + 1);
    return name.substr(0, name.rfind('.'));
}

} // namespace

std::string FltNodeWords::nameOf(FltModelTree const& tree, Number number)
{
    if (std::optional<FltRecordView> const longId = tree.ancillary(number, FltOpcode::longID))
        return longIdIn(*longId);
    return shortNameOf(tree.recordOf(number));
}

std::string FltNodeWords::idIn(FltRecordView const& record)
{
    return hasId(record) ? textIn(FltDecoded<FltRecordId>(record).idASCII) : std::string();
}

std::string FltNodeWords::longIdIn(FltRecordView const& record)
{
    return FltDecoded<FltRecordLongID>(record).idASCII.get();
}

std::vector<std::string> FltNodeWords::commentsOf(FltModelTree const& tree, Number number)
{
    std::vector<std::string> comments;
    if (tree.opcodeOf(number) == FltOpcode::text)
        return comments;
    for (FltRecordView const& each : tree.ancillaries(number))
        if (each.opcode == FltOpcode::comment)
            comments.push_back(commentIn(each));
    return comments;
}

std::string FltNodeWords::textOf(FltModelTree const& tree, Number number)
{
    std::optional<FltRecordView> const comment = tree.ancillary(number, FltOpcode::comment);
    return comment ? commentIn(*comment) : std::string();
}
