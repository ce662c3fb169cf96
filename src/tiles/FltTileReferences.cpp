#include "tiles/FltTileReferences.h"

#include "visual/FltNodeMatrix.h"

#include <algorithm>

namespace
{

/// More of them nobody looks at.
constexpr std::size_t mostPlaces = 1'000'000;

bool isDrawn(FltVisualNode const& node, std::size_t child)
{
    if (node.children[child] == nullptr || node.children[child]->isHidden)
        return false;
    if (node.as<FltVisualFlipBook>() != nullptr)
        return child == FltVisualFlipBook::first;
    auto const* const choice = node.as<FltVisualSwitch>();
    return choice == nullptr || choice->shows(choice->currentMask, child);
}

} // namespace

std::vector<FltTileReferences::Place> FltTileReferences::in(std::shared_ptr<FltVisualNode const> const& root)
{
    FltTileReferences references;
    if (root != nullptr && !root->isHidden)
        references.visit(*root, SbDPMatrix::identity());
    return std::move(references.places);
}

bool FltTileReferences::leadsToFile(FltVisualNode const& node)
{
    if (auto const found = known.find(&node); found != known.end())
        return found->second;
    bool leads = node.as<FltVisualFile>() != nullptr;
    for (std::size_t i = 0; i < node.children.size() && !leads; ++i)
        leads = isDrawn(node, i) && leadsToFile(*node.children[i]);
    return known[&node] = leads;
}

void FltTileReferences::visit(FltVisualNode const& node, SbDPMatrix const& around)
{
    if (!leadsToFile(node) || places.size() >= mostPlaces)
        return;
    SbDPMatrix matrix = FltNodeMatrix::of(node);
    FltNodeMatrix::makeAffine(matrix);
    matrix.multRight(around);
    if (auto const* const file = node.as<FltVisualFile>())
        places.emplace_back(file->path, matrix);
    auto const* const copies = node.as<FltVisualCopies>();
    std::vector<SbDPMatrix> const once = {SbDPMatrix::identity()};
    for (SbDPMatrix copy : copies != nullptr ? copies->places : once) {
        FltNodeMatrix::makeAffine(copy);
        copy.multRight(matrix);
        for (std::size_t i = 0; i < node.children.size(); ++i)
            if (isDrawn(node, i))
                visit(*node.children[i], copy);
    }
}
