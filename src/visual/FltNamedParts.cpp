#include "visual/FltNamedParts.h"

#include <utility>

FltNamedParts::FltNamedParts(std::unique_ptr<FltFileInput> input, std::unique_ptr<FltModel> model,
                             FltVisualSetting& setting, double worldPerUnit)
    : input(std::move(input)), model(std::move(model)), builder(*this->model, setting, worldPerUnit),
      numbers(this->model->tree)
{
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
