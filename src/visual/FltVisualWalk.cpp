#include "visual/FltVisualWalk.h"

#include "visual/FltMirrors.h"
#include "visual/FltNodeMatrix.h"

#include <algorithm>

namespace
{

constexpr std::size_t none = ~std::size_t(0);

/// The number of the level that is drawn; none where all are.
std::size_t chosenLevel(FltVisualNode const& node, FltVisualOptions::LevelsOfDetail choice)
{
    using Choice = FltVisualOptions::LevelsOfDetail;
    if (node.as<FltVisualLevels>() == nullptr || choice == Choice::all)
        return none;
    auto const isThere = [](std::shared_ptr<FltVisualNode> const& level) { return level != nullptr; };
    auto const& all = node.children;
    auto const first = std::find_if(all.begin(), all.end(), isThere) - all.begin();
    auto const last = all.rend() - std::find_if(all.rbegin(), all.rend(), isThere) - 1;
    return static_cast<std::size_t>(choice == Choice::highest ? first : last);
}

/// Whether a child of levels is drawn where one of them is chosen.
bool isAtLevel(FltVisualNode const& node, std::size_t child, std::size_t chosen)
{
    return chosen == none || (child >= chosen && child < node.as<FltVisualLevels>()->endOfDrawn(chosen));
}

bool isDrawn(FltVisualNode const& node, std::size_t child, std::size_t level)
{
    if (node.children[child] == nullptr || node.children[child]->isHidden || !isAtLevel(node, child, level))
        return false;
    if (node.as<FltVisualFlipBook>() != nullptr)
        return child == FltVisualFlipBook::first;
    auto const* const choice = node.as<FltVisualSwitch>();
    return choice == nullptr || choice->shows(choice->currentMask, child);
}

/// The places of copies in the order in which they are drawn: those in mirrors come last.
std::vector<SbDPMatrix> placesOf(FltVisualNode const& node)
{
    auto const* const copies = node.as<FltVisualCopies>();
    std::vector<SbDPMatrix> places;
    for (bool const isMirror : {false, true})
        for (std::size_t i = 0; copies != nullptr && i < copies->places.size(); ++i)
            if (FltMirrors::isMirror(copies->places[i]) == isMirror)
                places.push_back(copies->places[i]);
    return places;
}

} // namespace

FltVisualWalk::FltVisualWalk(std::shared_ptr<FltVisualNode const> root, LevelsOfDetail levels)
    : root(std::move(root)), levels(levels)
{
    if (this->root != nullptr)
        enter(*this->root, SbDPMatrix::identity());
}

void FltVisualWalk::enter(FltVisualNode const& node, SbDPMatrix const& above)
{
    bool const isFirst = frames.empty();
    bool const hasRecord = node.record.offset != FltVisualNode::Record::none;
    frames.push_back({&node, isFirst || !node.name.empty() ? &node : frames.back().named,
                      isFirst || hasRecord ? &node : frames.back().recorded, FltNodeMatrix::of(node) * above,
                      chosenLevel(node, levels), placesOf(node)});
}

/// Enters the next child of the last node. @return whether there is one
bool FltVisualWalk::goDown()
{
    FltVisualNode const& node = *frames.back().node;
    bool const isCopied = node.as<FltVisualCopies>() != nullptr;
    std::size_t const places = isCopied ? frames.back().places.size() : 1;
    while (frames.back().step < places * node.children.size()) {
        std::size_t const step = frames.back().step++;
        std::size_t const inTurn = step % node.children.size();
        bool const isCoarsestFirst = frames.back().level != none; // levels that stay are drawn beneath
        std::size_t const child = isCoarsestFirst ? node.children.size() - 1 - inTurn : inTurn;
        if (!isDrawn(node, child, frames.back().level))
            continue;
        SbDPMatrix matrix = frames.back().matrix;
        if (isCopied)
            matrix.multLeft(frames.back().places[step / node.children.size()]);
        enter(*node.children[child], matrix);
        return true;
    }
    return false;
}

bool FltVisualWalk::next()
{
    while (!frames.empty()) {
        if (goDown())
            continue;
        Frame& frame = frames.back();
        while (frame.mesh < frame.node->meshes.size()) {
            current = &frame.node->meshes[frame.mesh++];
            if (!current->isHidden)
                return true;
        }
        frames.pop_back();
    }
    return false;
}
