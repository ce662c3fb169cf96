#include "view/VisualPart.h"

#include "visual/FltNodeCopy.h"

#include <algorithm>
#include <set>

namespace
{

using Node = std::shared_ptr<FltVisualNode>;

/// Finds the way down to a record.
class Search
{
public:
    Search(std::uint64_t offset, std::size_t file) : offset(offset), file(file) {}

    bool isMeant(FltVisualNode const& node) const
    {
        return node.record.offset == offset && node.record.file == file;
    }

    /// @return whether the record is below the node; the way leads there then
    bool find(FltVisualNode const& node)
    {
        if (!seen.insert(&node).second)
            return false;
        for (Node const& child : node.children) {
            if (child == nullptr)
                continue;
            way.push_back(child);
            if (isMeant(*child) || find(*child))
                return true;
            way.pop_back();
        }
        return false;
    }

    std::vector<Node> way;

private:
    std::uint64_t offset;
    std::size_t file;
    std::set<FltVisualNode const*> seen; ///< Shared parts are looked through once.
};

/// A node like another one, with a single child, which is always shown.
Node above(FltVisualNode const& node, Node const& child)
{
    Node alike = FltNodeCopy::namedLike(node);
    alike->isHidden = false;
    alike->transform = node.transform;
    alike->senses = node.senses;
    FltNodeCopy::takeContent<FltVisualJoint, FltVisualCopies, FltVisualScale>(node, *alike);
    alike->children = {child};
    return alike;
}

} // namespace

std::optional<FltVisual> VisualPart::of(FltVisual whole, FltRecordPlace const& place)
{
    auto const file = std::find(whole.files.begin(), whole.files.end(), place.file);
    if (file == whole.files.end() || whole.root == nullptr)
        return std::nullopt;
    Search search(place.offset, static_cast<std::size_t>(file - whole.files.begin()));
    if (search.isMeant(*whole.root))
        return whole;
    if (!search.find(*whole.root))
        return std::nullopt;
    Node part = search.way.back();
    part->isHidden = false;
    for (auto node = search.way.rbegin() + 1; node != search.way.rend(); ++node)
        part = above(**node, part);
    whole.root = above(*whole.root, part);
    return whole;
}
