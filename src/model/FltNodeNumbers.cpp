#include "model/FltNodeNumbers.h"

#include "messages/FltText.h"
#include "model/FltNodeWords.h"
#include "records/FltOpcodeTable.h"

using Number = FltModelTree::Number;

namespace
{

/// Whether a record of the hierarchy begins with a name.
bool mayHaveName(FltRecordView const& record)
{
    using Part = FltOpcodeRow::Part;
    Part const part = FltOpcodeTable::partOf(static_cast<int>(record.opcode));
    return part == Part::node || part == Part::component;
}

} // namespace

FltNodeNumbers::FltNodeNumbers(FltModelTree const& tree)
{
    for (Number number = FltModelTree::root + 1; number < tree.getCount(); ++number)
        if (mayHaveName(tree.recordOf(number)))
            numbers.try_emplace(FltText::utf8(FltNodeWords::nameOf(tree, number)), number);
}

Number FltNodeNumbers::find(std::string const& name) const
{
    auto const found = numbers.find(FltText::utf8(name));
    return found != numbers.end() ? found->second : FltModelTree::none;
}
