#include "visual/FltNamedParts.h"

#include "model/FltNodeWords.h"
#include "records/FltOpcodeTable.h"

#include <utility>

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

FltNamedParts::FltNamedParts(std::unique_ptr<FltFileInput> input, std::unique_ptr<FltModel> model,
                             FltVisualSetting& setting, double worldPerUnit)
    : input(std::move(input)), model(std::move(model)), builder(*this->model, setting, worldPerUnit)
{
    FltModelTree const& tree = this->model->tree;
    for (Number number = FltModelTree::root + 1; number < tree.getCount(); ++number)
        if (mayHaveName(tree.recordOf(number)))
            numbers.try_emplace(FltNodeWords::nameOf(tree, number), number);
}

FltNamedParts::Number FltNamedParts::find(std::string const& name) const
{
    auto const found = numbers.find(name);
    return found != numbers.end() ? found->second : FltModelTree::none;
}

std::int64_t FltNamedParts::bytesOf(Number number) const
{
    FltModelTree const& tree = model->tree;
    Number last = number;
    while (tree[last].lastChild != FltModelTree::none)
        last = tree[last].lastChild;
    FltRecordView const& end = tree.recordOf(last);
    return static_cast<std::int64_t>(end.offset + end.size - tree.recordOf(number).offset);
}
