#include "inspect/FltCheckPlaces.h"

#include "messages/FltFindingNumber.h"
#include "model/FltTransformation.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "records/FltRecordBoundingVolume.h"
#include "records/FltRecordLOD.h"
#include "records/FltRecordReplicate.h"

#include <Inventor/SbDPMatrix.h>
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>

namespace Number = FltFindingNumber;

namespace
{

constexpr std::uint32_t additiveFlag = 1U << 30;

/// Distances meet if they differ by less than this part of them.
constexpr double meeting = 1e-6;

/// Levels are looked at beside so many of the next ones.
constexpr std::size_t mostNeighbours = 8;

template <class Record>
SbBox3d boxIn(FltRecordView const& record)
{
    FltDecoded<Record> const box(record);
    return {
        static_cast<double>(box.XcoordinateLowestCorner),  static_cast<double>(box.YcoordinateLowestCorner),
        static_cast<double>(box.ZcoordinateLowestCorner),  static_cast<double>(box.XcoordinateHighestCorner),
        static_cast<double>(box.YcoordinateHighestCorner), static_cast<double>(box.ZcoordinateHighestCorner)};
}

/// Whether the sides of two boxes are nearer than a hundredth of their size, and a distance.
bool areEqual(SbBox3d const& stored, SbBox3d const& found, double least)
{
    double const room = std::max(0.01 * std::max(stored.getSize().length(), found.getSize().length()), least);
    for (int const axis : {0, 1, 2})
        if (!(std::abs(stored.getMin()[axis] - found.getMin()[axis]) <= room) ||
            !(std::abs(stored.getMax()[axis] - found.getMax()[axis]) <= room))
            return false;
    return true;
}

} // namespace

std::string FltCheckPlaces::placeOf(SbVec3d const& vector)
{
    return "(" + textOf(vector[0]) + ", " + textOf(vector[1]) + ", " + textOf(vector[2]) + ")";
}

void FltCheckPlaces::check()
{
    for (std::uint32_t node = 0; node < inventory.nodes.size(); ++node) {
        if (checked.numberOf(node) == FltModelTree::none)
            continue;
        checkTransformation(node);
        checkBox(node);
    }
    checkLevels();
}

void FltCheckPlaces::checkTransformation(std::uint32_t node)
{
    FltModelTree const& tree = checked.model.tree;
    FltModelTree::Number const number = checked.numberOf(node);
    FltInventory::Node const& here = inventory.nodes[node];
    FltTransformation const transformation(tree, number);
    bool isMirror = false;
    for (auto const& matrix : transformation.getMatrices())
        isMirror = isMirror != (SbDPMatrix(matrix).det3() < 0);
    if (isMirror)
        findings.add(Number::mirroringMatrix, here.offset, here.opcode, node, FltOpcodeName::of(here.opcode));
    std::optional<FltRecordView> const replicate = tree.ancillary(number, FltOpcode::replicate);
    if (!replicate || !transformation.getMatrices().empty())
        return;
    if (int const copies = FltDecoded<FltRecordReplicate>(*replicate).numberOfReplications; copies > 0)
        findings.add(Number::replicationInPlace, here.offset, here.opcode, node,
                     std::to_string(copies) + (copies == 1 ? " copy" : " copies"));
}

/// It counts where faces are all that is below the node, so that nothing else can have widened it. It may be
/// told before the matrices of the node act, or after.
void FltCheckPlaces::checkBox(std::uint32_t node)
{
    FltModelTree const& tree = checked.model.tree;
    FltModelTree::Number const number = checked.numberOf(node);
    std::optional<FltRecordView> const box = tree.ancillary(number, FltOpcode::boundingBox);
    std::optional<FltRecordView> const old = tree.ancillary(number, FltOpcode::oldBoundingBox);
    if ((!box && !old) || !checked.isWhole() || !boxes.isPlain(node) || boxes.boxOf(node).isEmpty())
        return;
    SbBox3d const stored = box ? boxIn<FltRecordBoundingBox>(*box) : boxIn<FltRecordOldBoundingBox>(*old);
    double const least = box ? 0 : 1; // the old form has whole numbers
    if (areEqual(stored, boxes.boxOf(node), least) || areEqual(stored, boxes.placedBoxOf(node), least))
        return;
    SbBox3d const& found = boxes.boxOf(node);
    FltRecordView const& record = box ? *box : *old;
    findings.add(Number::wrongBox, record.offset, static_cast<int>(record.opcode), node,
                 "it is from " + placeOf(stored.getMin()) + " to " + placeOf(stored.getMax()) +
                     ", the faces from " + placeOf(found.getMin()) + " to " + placeOf(found.getMax()));
}

FltCheckPlaces::Level FltCheckPlaces::levelOf(FltInventory::LevelOfDetail const& lod) const
{
    Level level{&lod, 0, false, lod.switchIn};
    FltModelTree::Number const number = checked.numberOf(lod.node);
    if (number != FltModelTree::none && checked.recordOf(number).opcode == FltOpcode::lod) {
        FltDecoded<FltRecordLOD> const record(checked.recordOf(number));
        level.transition = record.transitionRange;
        level.isAdditive = (record.flags & additiveFlag) != 0;
    }
    return level;
}

/// Levels of detail with one parent.
void FltCheckPlaces::checkLevels()
{
    std::map<std::uint32_t, std::vector<Level>> siblings;
    for (FltInventory::LevelOfDetail const& lod : inventory.levelsOfDetail)
        if (lod.switchOut >= 0 && lod.switchIn > lod.switchOut && !boxes.boxOf(lod.node).isEmpty())
            siblings[inventory.nodes[lod.node].parent].push_back(levelOf(lod));
    for (auto& [parent, levels] : siblings)
        checkSiblings(levels);
}

/// Each is looked at beside the next one that stands for the same thing.
void FltCheckPlaces::checkSiblings(std::vector<Level>& levels)
{
    std::stable_sort(levels.begin(), levels.end(), [](Level const& left, Level const& right) {
        return left.lod->switchOut < right.lod->switchOut;
    });
    for (std::size_t i = 0; i < levels.size(); ++i) {
        std::size_t const end = std::min(levels.size(), i + 1 + mostNeighbours);
        for (std::size_t next = i + 1; next < end; ++next) {
            if (!areAlike(levels[i], levels[next]))
                continue;
            checkPair(levels[i], levels[next]);
            levels[next].reach = std::max(levels[next].reach, levels[i].reach);
            break;
        }
    }
}

void FltCheckPlaces::checkPair(Level const& near, Level const& far)
{
    FltInventory::Node const& node = inventory.nodes[far.lod->node];
    std::string const name = quoted(inventory.nodes[near.lod->node].name);
    if (far.lod->switchOut > near.reach * (1 + meeting)) {
        findings.add(Number::gapInLevels, node.offset, node.opcode, far.lod->node,
                     "nothing from " + textOf(near.reach) + ", where " + name + " ends, to " +
                         textOf(far.lod->switchOut));
        return;
    }
    double const overlap = near.lod->switchIn - far.lod->switchOut;
    bool const isCrossing =
        near.lod->switchOut < far.lod->switchOut && near.lod->switchIn < far.lod->switchIn;
    bool const isMeant = near.isAdditive || far.isAdditive ||
                         overlap <= std::max({near.transition, far.transition, meeting * near.lod->switchIn});
    if (isCrossing && !isMeant)
        findings.add(Number::overlappingLevels, node.offset, node.opcode, far.lod->node,
                     "from " + textOf(far.lod->switchOut) + " to " + textOf(near.lod->switchIn) +
                         " both it and " + name + " are seen");
}

/// Whether two levels stand for the same thing: in one place, and about as large.
bool FltCheckPlaces::areAlike(Level const& left, Level const& right) const
{
    SbBox3d const a = boxes.placedBoxOf(left.lod->node);
    SbBox3d const b = boxes.placedBoxOf(right.lod->node);
    double const thickness = 0.01 * std::max(a.getSize().length(), b.getSize().length());
    for (int axis = 0; axis < 3; ++axis) {
        double const common = std::min(a.getMax()[axis], b.getMax()[axis]) -
                              std::max(a.getMin()[axis], b.getMin()[axis]) + thickness;
        double const whole = std::max(a.getMax()[axis], b.getMax()[axis]) -
                             std::min(a.getMin()[axis], b.getMin()[axis]) + thickness;
        if (!(common >= 0.5 * whole))
            return false;
    }
    return true;
}
