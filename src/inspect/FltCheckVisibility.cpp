#include "inspect/FltCheckVisibility.h"

#include "messages/FltFindingNumber.h"
#include "records/FltOpcode.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace Number = FltFindingNumber;

void FltCheckVisibility::check()
{
    checkRanges();
    checkSwitches();
    checkDegreesOfFreedom();
    for (FltInventory::Matrix const& matrix : inventory.matrices)
        if (!(std::abs(matrix.determinant) > 0)) // also not a number
            findings.add(Number::flatMatrix, matrix.offset, FltOpcode::matrix, matrix.node, "");
}

void FltCheckVisibility::checkRanges()
{
    struct Range {
        double near, far;
    };
    std::vector<Range> seen(inventory.nodes.size(),
                            {0, HUGE_VAL}); // where nodes are seen, by those above them
    std::size_t next = 0;
    for (std::uint32_t i = 1; i < inventory.nodes.size(); ++i) {
        FltInventory::Node const& node = inventory.nodes[i];
        seen[i] = seen[node.parent];
        if (next == inventory.levelsOfDetail.size() || inventory.levelsOfDetail[next].node != i)
            continue;
        FltInventory::LevelOfDetail const& lod = inventory.levelsOfDetail[next++];
        std::string const text = "from " + textOf(lod.switchOut) + " to " + textOf(lod.switchIn);
        bool const isFinite = std::isfinite(lod.switchIn) && std::isfinite(lod.switchOut) &&
                              std::isfinite(lod.centre[0]) && std::isfinite(lod.centre[1]) &&
                              std::isfinite(lod.centre[2]);
        bool const isAlwaysSeen = lod.switchIn == 0 && lod.switchOut == 0;
        if (!isFinite) {
            findings.add(Number::unusableRange, node.offset, node.opcode, i, text);
        } else if (!isAlwaysSeen && lod.switchIn <= lod.switchOut) {
            findings.add(Number::emptyRange, node.offset, node.opcode, i, text);
        } else if (!isAlwaysSeen) {
            bool const wasSeen = seen[i].near < seen[i].far;
            seen[i] = {std::max(seen[i].near, lod.switchOut), std::min(seen[i].far, lod.switchIn)};
            if (wasSeen && seen[i].near >= seen[i].far)
                findings.add(Number::hiddenRange, node.offset, node.opcode, i, text);
        }
    }
}

void FltCheckVisibility::checkSwitches()
{
    for (FltInventory::Switch const& one : inventory.switches) {
        FltInventory::Node const& node = inventory.nodes[one.node];
        if (one.currentMask < 0 || one.currentMask >= one.maskCount)
            findings.add(Number::noSuchMask, node.offset, node.opcode, one.node,
                         "mask " + std::to_string(one.currentMask) + " of " + std::to_string(one.maskCount));
        // Faces directly below it are children as well, but which of them stands where isn't known any more.
        if (node.faces != 0 || one.wordsPerMask <= 0 || one.words.empty())
            continue;
        auto const wordsPerMask = static_cast<std::size_t>(one.wordsPerMask);
        FltInventory::Switch any;
        any.wordsPerMask = one.wordsPerMask;
        any.words.resize(std::min(wordsPerMask, one.words.size()));
        for (std::size_t i = 0; i < one.words.size(); ++i)
            any.words[i % wordsPerMask] |= one.words[i];
        for (std::uint32_t child = 0; child < node.children; ++child)
            if (!any.shows(0, child))
                findings.add(Number::neverShownChild, node.offset, node.opcode, one.node,
                             "child " + std::to_string(child));
    }
}

void FltCheckVisibility::checkDegreesOfFreedom()
{
    for (FltInventory::DegreeOfFreedom const& dof : inventory.degreesOfFreedom)
        for (std::size_t i = 0; i < dof.ranges.size(); ++i) {
            auto const& range = dof.ranges[i];
            bool const isImpossible =
                range.isLimited && (range.least > range.most || range.current < range.least ||
                                    range.current > range.most || std::isnan(range.current));
            FltInventory::Node const& node = inventory.nodes[dof.node];
            if (isImpossible)
                findings.add(Number::impossibleLimits, node.offset, node.opcode, dof.node,
                             std::string(FltInventory::DegreeOfFreedom::nameOf(i)) + " is " +
                                 textOf(range.current) + ", between " + textOf(range.least) + " and " +
                                 textOf(range.most));
        }
}
