#include "visual/FltMeshMerger.h"

#include "visual/FltLocalOrigin.h"
#include "visual/FltMeshJoiner.h"
#include "visual/FltNodeMatrix.h"

#include <Inventor/SbBox3d.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <variant>

namespace
{

using Source = FltMeshJoiner::Source;
using Child = std::shared_ptr<FltVisualNode>;

/// A mesh, and where it is.
struct PlacedSource : Source {
    SbBox3d box;
    SbVec3d middle{0, 0, 0};
};

using Sources = std::vector<PlacedSource*>;

/// A light shines on what comes after it, so that nothing may leave the node that it stands in.
bool hasLight(FltVisualNode const& node)
{
    return std::any_of(node.children.begin(), node.children.end(), [](Child const& child) {
        return child != nullptr && child->as<FltVisualLight>() != nullptr;
    });
}

bool isGroup(FltVisualNode const& node)
{
    return std::holds_alternative<std::monostate>(node.content);
}

/// Whether a node draws meshes of its own as they stand in it.
bool takesMeshes(FltVisualNode const& node)
{
    return isGroup(node) || node.as<FltVisualLevel>() != nullptr || node.as<FltVisualJoint>() != nullptr ||
           node.as<FltVisualText>() != nullptr;
}

bool isUsable(SbDPMatrix const& matrix)
{
    bool const isAffine = matrix[0][3] == 0 && matrix[1][3] == 0 && matrix[2][3] == 0 && matrix[3][3] == 1;
    double const volume = matrix.det4();
    return isAffine && std::isfinite(volume) && volume > 0;
}

/// Whether what stands in a child may leave it.
bool mayLeave(Child const& child, SbDPMatrix const& matrix)
{
    return child.use_count() == 1 && !child->isHidden && isGroup(*child) && !hasLight(*child) &&
           isUsable(matrix);
}

bool isEmpty(FltVisualNode const& node)
{
    return isGroup(node) && node.children.empty() && node.meshes.empty() && node.comments.empty();
}

/// Notes where a source is.
void place(PlacedSource& source)
{
    for (SbVec3f const& position : source.mesh.positions)
        source.box.extendBy(FltMeshJoiner::placeOf(source, position));
    SbVec3d const middle = source.box.getCenter();
    for (int axis = 0; axis < 3; ++axis)
        source.middle[axis] = std::isfinite(middle[axis]) ? middle[axis] : 0;
}

double extentOf(SbBox3d const& box)
{
    SbVec3d const size = box.getMax() - box.getMin();
    return std::max({size[0], size[1], size[2]});
}

/// Whether sources are few enough for one piece, and near enough to each other.
bool makeOnePiece(Sources::const_iterator begin, Sources::const_iterator end, double metresPerUnit)
{
    std::size_t corners = 0;
    SbBox3d box;
    double smallest = std::numeric_limits<double>::infinity();
    for (auto each = begin; each != end; ++each) {
        corners += (*each)->mesh.positions.size();
        box.extendBy((*each)->box);
        smallest = std::min(smallest, extentOf((*each)->box));
    }
    return corners <= FltMeshMerger::cornersOfPiece &&
           FltLocalOrigin::mayCountTogether(extentOf(box), smallest, metresPerUnit);
}

/// Sorts sources along the axis on which they lie farthest apart.
void sortAlongLongestAxis(Sources::iterator begin, Sources::iterator end)
{
    SbBox3d box;
    for (auto each = begin; each != end; ++each)
        box.extendBy((*each)->middle);
    SbVec3d const size = box.getMax() - box.getMin();
    int const axis = size[0] >= size[1] && size[0] >= size[2] ? 0 : size[1] >= size[2] ? 1 : 2;
    std::stable_sort(begin, end, [axis](PlacedSource const* left, PlacedSource const* right) {
        return left->middle[axis] < right->middle[axis];
    });
}

/// Joins what looks alike of sources that stand side by side.
void joinPiece(Sources::const_iterator begin, Sources::const_iterator end, double metresPerUnit,
               std::vector<FltMesh>& meshes)
{
    std::vector<std::vector<Source*>> looks; // in the order in which they appear
    std::unordered_multimap<std::size_t, std::size_t> numbers;
    for (auto each = begin; each != end; ++each) {
        std::size_t const hash = FltMeshJoiner::hashOf((*each)->mesh);
        auto const [first, last] = numbers.equal_range(hash);
        auto const known = std::find_if(first, last, [&](auto const& number) {
            return FltMeshJoiner::lookAlike(looks[number.second].front()->mesh, (*each)->mesh);
        });
        if (known != last) {
            looks[known->second].push_back(*each);
        } else {
            numbers.emplace(hash, looks.size());
            looks.push_back({*each});
        }
    }
    for (std::vector<Source*> const& look : looks)
        meshes.push_back(FltMeshJoiner::join(look, metresPerUnit));
}

/// Joins sources in pieces of a bounded size.
void joinInPieces(Sources::iterator begin, Sources::iterator end, double metresPerUnit,
                  std::vector<FltMesh>& meshes)
{
    if (end - begin == 1 || makeOnePiece(begin, end, metresPerUnit)) {
        joinPiece(begin, end, metresPerUnit, meshes);
        return;
    }
    sortAlongLongestAxis(begin, end);
    auto const half = begin + (end - begin) / 2;
    joinInPieces(begin, half, metresPerUnit, meshes);
    joinInPieces(half, end, metresPerUnit, meshes);
}

class Merging
{
public:
    /// Joins meshes in a node, and in all below it.
    void mergeIn(FltVisualNode& node, double metresPerUnit)
    {
        if (!merged.insert(&node).second)
            return;
        if (auto const* const scale = node.as<FltVisualScale>())
            metresPerUnit *= std::abs(scale->factor);
        if (!takesMeshes(node)) {
            for (Child const& child : node.children)
                if (child != nullptr)
                    mergeIn(*child, metresPerUnit);
            return;
        }
        std::vector<std::unique_ptr<PlacedSource>> sources;
        gather(node, SbDPMatrix::identity(), node.record, metresPerUnit, sources);
        Sources all;
        for (auto const& source : sources)
            all.push_back(source.get());
        if (!all.empty())
            joinInPieces(all.begin(), all.end(), metresPerUnit, node.meshes);
    }

private:
    /// Takes the meshes out of a node and of those below it that belong together with it.
    void gather(FltVisualNode& node, SbDPMatrix const& matrix, FltVisualRecord const& recordAbove,
                double metresPerUnit, std::vector<std::unique_ptr<PlacedSource>>& sources)
    {
        bool const isRecorded = node.record.offset != FltVisualRecord::none;
        FltVisualRecord const& record = isRecorded ? node.record : recordAbove;
        bool const isLit = hasLight(node);
        for (Child& child : node.children) {
            if (child == nullptr)
                continue;
            SbDPMatrix const inside = FltNodeMatrix::of(*child) * matrix;
            if (isLit || !mayLeave(child, inside)) {
                mergeIn(*child, metresPerUnit);
                continue;
            }
            gather(*child, inside, record, metresPerUnit, sources);
            if (isEmpty(*child))
                child = nullptr;
        }
        node.children.erase(std::remove(node.children.begin(), node.children.end(), nullptr),
                            node.children.end());
        take(node, matrix, record, sources);
    }

    static void take(FltVisualNode& node, SbDPMatrix const& matrix, FltVisualRecord const& record,
                     std::vector<std::unique_ptr<PlacedSource>>& sources)
    {
        auto const firstTaken =
            std::stable_partition(node.meshes.begin(), node.meshes.end(),
                                  [](FltMesh const& mesh) { return !FltMeshJoiner::mayJoin(mesh); });
        for (auto mesh = firstTaken; mesh != node.meshes.end(); ++mesh) {
            auto source = std::make_unique<PlacedSource>();
            source->mesh = std::move(*mesh);
            source->matrix = matrix;
            source->record = record;
            place(*source);
            sources.push_back(std::move(source));
        }
        node.meshes.erase(firstTaken, node.meshes.end());
    }

    std::unordered_set<FltVisualNode const*> merged;
};

} // namespace

void FltMeshMerger::merge(FltVisualNode& root, double metresPerUnit)
{
    Merging().mergeIn(root, metresPerUnit);
}
