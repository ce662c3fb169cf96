#include "inspect/FltSeenTogether.h"

#include "model/FltTransformation.h"
#include "records/FltOpcode.h"
#include "records/FltRecordGroupAndObject.h"

namespace
{

constexpr std::uint32_t animationFlags = 1U << 30 | 1U << 29 | 1U << 25;
constexpr std::uint32_t timeAndShadowFlags = 1U << 31 | 1U << 30 | 1U << 29 | 1U << 26;

} // namespace

FltSeenTogether::FltSeenTogether(FltCheckedModel const& checked) : checked(checked)
{
    auto const& nodes = checked.inventory.nodes;
    std::vector<bool> partsChildren(nodes.size());
    scopes.resize(nodes.size());
    for (std::uint32_t node = 0; node < nodes.size(); ++node) {
        Part const part = partOf(node);
        std::uint32_t const parent = nodes[node].parent;
        partsChildren[node] = part == Part::aloneWithChildren;
        bool const isAlone = part != Part::joined || parent == FltInventory::none || partsChildren[parent];
        scopes[node] = isAlone ? node : scopes[parent];
    }
}

FltSeenTogether::Part FltSeenTogether::partOf(std::uint32_t node) const
{
    FltModelTree::Number const number = checked.numberOf(node);
    if (number == FltModelTree::none || number == FltModelTree::root)
        return Part::alone;
    FltRecordView const& record = checked.recordOf(number);
    FltModelTree const& tree = checked.model.tree;
    if (record.opcode == FltOpcode::switchNode)
        return Part::aloneWithChildren;
    if (record.opcode == FltOpcode::group) {
        FltDecoded<FltRecordGroup> const group(record, checked.model.revision);
        if ((group.flags & animationFlags) != 0)
            return Part::aloneWithChildren;
        if (group.relativePriority != 0)
            return Part::alone;
    } else if (record.opcode == FltOpcode::object) {
        FltDecoded<FltRecordObject> const object(record);
        if ((object.flags & timeAndShadowFlags) != 0 || object.relativePriority != 0)
            return Part::alone;
    } else {
        return Part::alone;
    }
    bool const isMoved = !FltTransformation(tree, number).getMatrices().empty();
    return isMoved ? Part::alone : Part::joined;
}
