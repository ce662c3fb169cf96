#include "inspect/FltCheckedModel.h"

#include "model/FltModelReader.h"
#include "records/FltOpcode.h"

FltCheckedModel::FltCheckedModel(FltInventory const& inventory)
    : inventory(inventory), model(inventory.path(), inventory.file().data(), inventory.file().size(), true)
{
    FltLeftOut ignored;
    FltModelReader::read(model, ignored, [](std::size_t /*done*/) {});
    paletteVertices = static_cast<std::uint32_t>(model.vertices.size());
    whole = inventory.fault() == FltFraming::Fault::none && model.tree.isWhole() &&
            inventory.opcodes.count(FltOpcode::pushExtension) == 0;
    findParents();
    findNodes();
}

void FltCheckedModel::findParents()
{
    FltModelTree const& tree = model.tree;
    parents.assign(static_cast<std::size_t>(tree.getCount()), FltModelTree::none);
    for (Number number = 0; number < tree.getCount(); ++number)
        for (Number child = tree[number].firstChild; child != FltModelTree::none;
             child = tree[child].nextSibling)
            parents[static_cast<std::size_t>(child)] = number;
}

/// Both lists are in the order of the file, and what is above a record stands before it.
void FltCheckedModel::findNodes()
{
    FltModelTree const& tree = model.tree;
    numbers.assign(inventory.nodes.size(), FltModelTree::none);
    nodes.assign(parents.size(), inventory.nodes.empty() ? none : 0);
    if (!numbers.empty())
        numbers[0] = FltModelTree::root;
    std::uint32_t node = 0;
    for (Number number = 1; number < tree.getCount(); ++number) {
        std::size_t const offset = tree.recordOf(number).offset;
        while (node < inventory.nodes.size() && inventory.nodes[node].offset < offset)
            ++node;
        bool const isNode = node < inventory.nodes.size() && inventory.nodes[node].offset == offset;
        nodes[static_cast<std::size_t>(number)] = isNode ? node : nodeOf(parentOf(number));
        if (isNode)
            numbers[node] = number;
    }
}
