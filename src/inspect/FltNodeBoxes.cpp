#include "inspect/FltNodeBoxes.h"

#include "model/FltTransformation.h"
#include "records/FltOpcode.h"

#include <Inventor/SbDPMatrix.h>
#include <algorithm>
#include <cmath>

FltNodeBoxes::FltNodeBoxes(FltCheckedModel const& checked)
    : checked(checked), boxes(checked.inventory.nodes.size()), errors(boxes.size())
{
    for (std::uint32_t node = 0; node < boxes.size(); ++node)
        plain.push_back(isPlainItself(node));
}

void FltNodeBoxes::add(std::uint32_t node, SbVec3d const& position)
{
    boxes[node].extendBy(position);
    for (int axis = 0; axis < 3; ++axis) {
        auto const rounded = static_cast<double>(static_cast<float>(position[axis]));
        errors[node] = std::max(errors[node], std::abs(position[axis] - rounded));
    }
}

void FltNodeBoxes::join()
{
    auto const& nodes = checked.inventory.nodes;
    for (auto node = static_cast<std::uint32_t>(nodes.size()); node-- > 1;) {
        std::uint32_t const parent = nodes[node].parent;
        plain[parent] = plain[parent] && plain[node];
        SbBox3d const placed = placedBoxOf(node);
        if (!placed.isEmpty())
            boxes[parent].extendBy(placed);
    }
}

SbBox3d FltNodeBoxes::placedBoxOf(std::uint32_t node) const
{
    SbBox3d box = boxes[node];
    FltModelTree::Number const number = checked.numberOf(node);
    if (number == FltModelTree::none || box.isEmpty())
        return box;
    // The last matrix acts first.
    FltTransformation const transformation(checked.model.tree, number);
    auto const& matrices = transformation.getMatrices();
    for (auto matrix = matrices.rbegin(); matrix != matrices.rend(); ++matrix)
        box.transform(SbDPMatrix(*matrix));
    return box;
}

bool FltNodeBoxes::isPlainItself(std::uint32_t node) const
{
    FltModelTree::Number const number = checked.numberOf(node);
    switch (checked.inventory.nodes[node].opcode) {
    case FltOpcode::header:
    case FltOpcode::group:
    case FltOpcode::object:
    case FltOpcode::lod:
    case FltOpcode::oldLOD:
    case FltOpcode::switchNode:
        return number != FltModelTree::none && !checked.model.tree.ancillary(number, FltOpcode::replicate);
    default:
        return false;
    }
}
