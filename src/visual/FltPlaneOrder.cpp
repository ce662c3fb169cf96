#include "visual/FltPlaneOrder.h"

#include "messages/FltWarningMessageConsole.h"
#include "model/FltRecordEntries.h"
#include "model/FltTransformation.h"
#include "records/FltOpcode.h"
#include "records/FltOpcodeTable.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordMesh.h"
#include "records/FltVertexListEntry.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <tuple>

namespace
{

constexpr FltModelTree::Number none = FltModelTree::none;
constexpr int mostLevels = 100;

/// Faces that may be looked at, for each node of the tree.
constexpr std::int64_t looksPerNode = 32;

/// Where the priority stands in records of a class.
template <class Record>
std::size_t placeOfPriority()
{
    static std::size_t const place = [] {
        Record const record(FltFieldReach::head);
        return FltFields::endOf(record, &record.relativePriority) - sizeof record.relativePriority;
    }();
    return place;
}

template <class Record>
int priorityIn(FltRecordView const& record)
{
    return static_cast<std::int16_t>(record.word16At(placeOfPriority<Record>()));
}

bool isCorners(FltRecordView const& record)
{
    return FltOpcodeTable::partOf(static_cast<int>(record.opcode)) == FltOpcodeRow::Part::corners;
}

std::uint8_t sumOf(int left, int right)
{
    return static_cast<std::uint8_t>(std::min(left + right, mostLevels));
}

} // namespace

FltPlaneOrder::FltPlaneOrder(FltModel const& model)
    : model(model), entriesLeft(looksPerNode * model.tree.getCount())
{
    Number const count = model.tree.getCount();
    std::vector<Number> ordered;
    for (Number number = 0; number < count; ++number)
        if (isOrdered(number))
            ordered.push_back(number);
    if (ordered.empty())
        return;
    levels.resize(static_cast<std::size_t>(count));
    heights.resize(levels.size());
    findEnds();
    findPlanes();
    for (Number number = count - 1; number >= 0; --number) {
        if (!ordered.empty() && ordered.back() == number) {
            order(number);
            ordered.pop_back();
        }
        for (Number child = model.tree[number].firstChild; isSurface(number) && child != none;
             child = model.tree[child].nextSibling)
            if (isSurface(child)) {
                auto const at = static_cast<std::size_t>(child);
                std::uint8_t& height = heights[static_cast<std::size_t>(number)];
                height = std::max(height, sumOf(levels[at] + 1, heights[at]));
            }
    }
}

int FltPlaneOrder::priorityOf(Number number) const
{
    FltRecordView const& record = model.tree.recordOf(number);
    switch (record.opcode) {
    case FltOpcode::face:
        return priorityIn<FltRecordFace>(record);
    case FltOpcode::mesh:
        return priorityIn<FltRecordMesh>(record);
    case FltOpcode::object:
        return priorityIn<FltRecordObject>(record);
    case FltOpcode::group:
        return priorityIn<FltRecordGroup>(record);
    default:
        return 0;
    }
}

/// Whether not all children have the same priority.
bool FltPlaneOrder::isOrdered(Number parent) const
{
    std::optional<int> first;
    for (Number child = model.tree[parent].firstChild; child != none; child = model.tree[child].nextSibling) {
        if (isCorners(model.tree.recordOf(child)))
            continue;
        int const priority = priorityOf(child);
        if (priority != first.value_or(priority))
            return true;
        first = priority;
    }
    return false;
}

bool FltPlaneOrder::isSurface(Number number) const
{
    std::uint32_t const opcode =
        number == FltModelTree::root ? std::uint32_t(0) : model.tree.recordOf(number).opcode;
    return opcode == FltOpcode::face || opcode == FltOpcode::mesh;
}

/// Nodes have their numbers in the order of the file, so that those below a node follow it.
void FltPlaneOrder::findEnds()
{
    ends.resize(levels.size());
    for (std::size_t at = ends.size(); at-- > 0;) {
        auto const number = static_cast<Number>(at);
        Number const last = model.tree[number].lastChild;
        ends[at] = last != none ? ends[static_cast<std::size_t>(last)] : number + 1;
    }
}

/// Finds the planes of all faces where they stand in the file as a whole.
void FltPlaneOrder::findPlanes()
{
    FltModelTree const& tree = model.tree;
    std::vector<std::optional<FltPlaneSet::Plane>> found(levels.size());
    std::vector<SbDPMatrix> matrices = {SbDPMatrix::identity()};
    std::vector<std::uint32_t> matrixOf(levels.size());
    std::vector<SbVec3d> points;
    double scale = 0;
    for (Number number = 0; number < tree.getCount(); ++number) {
        auto const at = static_cast<std::size_t>(number);
        if (!tree.ancillaries(number).empty() && number != FltModelTree::root) {
            SbDPMatrix matrix = matrices[matrixOf[at]];
            FltTransformation const transformation(tree, number);
            for (SbDPMatrix const& own : transformation.getMatrices())
                matrix.multLeft(own);
            matrixOf[at] = static_cast<std::uint32_t>(matrices.size());
            matrices.push_back(matrix);
        }
        for (Number child = tree[number].firstChild; child != none; child = tree[child].nextSibling)
            matrixOf[static_cast<std::size_t>(child)] = matrixOf[at];
        if (!isSurface(number))
            continue;
        readPoints(number, points);
        for (SbVec3d& point : points)
            matrices[matrixOf[at]].multVecMatrix(SbVec3d(point), point);
        found[at] = FltPlaneSet::planeOf(points);
        if (found[at])
            scale = std::max(scale, points[0].length());
    }
    FltPlaneSet set(scale);
    planes.resize(levels.size(), FltPlaneSet::none);
    for (std::size_t at = 0; at < planes.size(); ++at)
        if (found[at] && std::isfinite(found[at]->distance))
            planes[at] = set.numberOf(*found[at]);
}

void FltPlaneOrder::readPoints(Number surface, std::vector<SbVec3d>& points)
{
    FltModelTree const& tree = model.tree;
    points.clear();
    if (std::optional<FltRecordView> const pool = tree.ancillary(surface, FltOpcode::localVertexPool)) {
        FltDecoded<FltRecordLocalVertexPool> const head(*pool);
        FltRecordLocalVertexPool::Vertex vertex;
        vertex.mask = head.attributeMask;
        if (vertex.has(vertex.hasPosition)) {
            FltRecordEntries const entries(*pool, vertex, head);
            for (std::size_t i = 0; i < std::min<std::size_t>(head.numberOfVertices, entries.countWhole());
                 ++i) {
                entries.decode(i, vertex);
                points.emplace_back(vertex.position);
            }
        }
    }
    for (Number child = tree[surface].firstChild; child != none; child = tree[child].nextSibling) {
        FltRecordView const& record = tree.recordOf(child);
        switch (record.opcode) {
        case FltOpcode::vertexList:
            readList<FltVertexListEntry>(record, points);
            break;
        case FltOpcode::morphVertexList:
            readList<FltMorphVertexListEntry>(record, points);
            break;
        case FltOpcode::oldVertex:
        case FltOpcode::oldVertexColor:
        case FltOpcode::oldVertexColorNormal:
            points.emplace_back(
                oldVertices.placeOf(oldVertices.addOldVertex(record, *model.palettes.colors)).data());
            break;
        default:
            break;
        }
    }
}

template <class List>
void FltPlaneOrder::readList(FltRecordView const& record, std::vector<SbVec3d>& points) const
{
    List entry;
    FltRecordEntries const entries(record, entry);
    for (std::size_t i = 0; i < entries.countWhole(); ++i) {
        entries.decode(i, entry);
        std::uint32_t const vertex = model.vertices.find(entry.offset);
        if (vertex != FltVertexStore::none)
            points.emplace_back(model.vertices.placeOf(vertex).data());
    }
}

/// Orders what stands below the children of a node.
void FltPlaneOrder::order(Number parent)
{
    FltModelTree const& tree = model.tree;
    std::vector<Entry> entries;
    for (Number child = tree[parent].firstChild; child != none; child = tree[child].nextSibling) {
        int const priority = priorityOf(child);
        Number const end = ends[static_cast<std::size_t>(child)];
        for (Number number = child; number < end;) {
            auto const at = static_cast<std::size_t>(number);
            if (--entriesLeft < 0)
                return FltWarningMessageConsole::notifyGuard(
                    "Too many priorities are nested: further ones are passed over");
            bool const isElsewhere = tree.opcodeOf(number) == FltOpcode::instanceDefinition;
            if (planes[at] != FltPlaneSet::none)
                entries.push_back({planes[at], priority, number});
            number = isElsewhere || isSurface(number) ? ends[at] : number + 1;
        }
    }
    raise(entries);
}

/// Raises the faces of each priority over those of lower ones in the same plane.
void FltPlaneOrder::raise(std::vector<Entry>& entries)
{
    std::stable_sort(entries.begin(), entries.end(), [](Entry const& left, Entry const& right) {
        return std::tie(left.plane, left.priority) < std::tie(right.plane, right.priority);
    });
    int base = 0;    // where the faces of the present priority begin
    int highest = 0; // of those of the present priority and lower ones
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Entry const& entry = entries[i];
        if (i == 0 || entry.plane != entries[i - 1].plane)
            base = highest = 0;
        else if (entry.priority != entries[i - 1].priority)
            base = highest + 1;
        auto const at = static_cast<std::size_t>(entry.face);
        levels[at] = sumOf(base, levels[at]);
        highest = std::max(highest, levels[at] + heights[at]);
    }
}
