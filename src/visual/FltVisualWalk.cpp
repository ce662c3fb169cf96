#include "visual/FltVisualWalk.h"

#include "visual/FltJointMotion.h"

#include <algorithm>

namespace
{

SbDPMatrix matrixOf(FltVisualTurning const& turning)
{
    auto const& [right, back, up] = turning.rows;
    SbVec3d const& foot = turning.foot;
    return {right[0], right[1], right[2], 0, back[0], back[1], back[2], 0,
            up[0],    up[1],    up[2],    0, foot[0], foot[1], foot[2], 1};
}

SbDPMatrix matrixOf(FltVisualJoint const& joint)
{
    SbDPMatrix const motion(FltJointMotion(joint).matrix());
    if (!joint.frame)
        return motion;
    SbDPMatrix const frame(*joint.frame);
    return frame.inverse() * motion * frame;
}

/// What brings the children and meshes of a node into its parent's world.
SbDPMatrix matrixOf(FltVisualNode const& node)
{
    SbDPMatrix matrix = SbDPMatrix::identity();
    for (SbMatrix const& transform : node.transform)
        matrix.multLeft(SbDPMatrix(transform));
    if (auto const* const joint = node.as<FltVisualJoint>())
        matrix.multRight(matrixOf(*joint));
    if (auto const* const turning = node.as<FltVisualTurning>())
        matrix.multRight(matrixOf(*turning));
    if (auto const* const scale = node.as<FltVisualScale>()) {
        SbDPMatrix factor;
        factor.setScale(scale->factor);
        matrix.multRight(factor);
    }
    return matrix;
}

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
                      isFirst || hasRecord ? &node : frames.back().recorded, matrixOf(node) * above,
                      chosenLevel(node, levels)});
}

/// Enters the next child of the last node. @return whether there is one
bool FltVisualWalk::goDown()
{
    FltVisualNode const& node = *frames.back().node;
    auto const* const copies = node.as<FltVisualCopies>();
    std::size_t const places = copies != nullptr ? copies->places.size() : 1;
    while (frames.back().step < places * node.children.size()) {
        std::size_t const step = frames.back().step++;
        std::size_t const child = step % node.children.size();
        if (!isDrawn(node, child, frames.back().level))
            continue;
        SbDPMatrix matrix = frames.back().matrix;
        if (copies != nullptr)
            matrix.multLeft(SbDPMatrix(copies->places[step / node.children.size()]));
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
