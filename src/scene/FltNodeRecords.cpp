#include "scene/FltNodeRecords.h"

#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <Inventor/nodes/SoVertexShape.h>
#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_set>

namespace
{

constexpr std::uint32_t none = ~std::uint32_t(0);

template <class Pair>
void sortByAddress(std::vector<Pair>& pairs)
{
    std::sort(pairs.begin(), pairs.end(),
              [](Pair const& left, Pair const& right) { return std::less<>()(left.first, right.first); });
    pairs.shrink_to_fit();
}

template <class Pair>
Pair const* findAddress(std::vector<Pair> const& pairs, SoNode const* node)
{
    auto const place =
        std::lower_bound(pairs.begin(), pairs.end(), node, [](Pair const& pair, SoNode const* address) {
            return std::less<>()(pair.first, address);
        });
    return place != pairs.end() && place->first == node ? &*place : nullptr;
}

/// Calls a function with every node right below another one, the last first.
template <class Function>
void forEachBelow(SoNode const& node, Function function)
{
    if (node.isOfType(SoVertexShape::getClassTypeId()))
        if (SoNode const* const held = static_cast<SoVertexShape const&>(node).vertexProperty.getValue())
            function(held);
    SoChildList const* const children = node.getChildren();
    for (int i = children != nullptr ? children->getLength() : 0; i > 0; --i)
        function((*children)[i - 1]);
}

} // namespace

void FltNodeRecords::add(SoNode const* node, Record const& record)
{
    if (record.offset != Record::none)
        records.emplace_back(node, record);
}

void FltNodeRecords::addShape(SoNode const* shape, std::vector<FltMesh::Part> const& parts)
{
    if (!parts.empty())
        shapes.emplace_back(shape, parts);
}

void FltNodeRecords::finish()
{
    sortByAddress(records);
    sortByAddress(shapes);
}

std::uint32_t FltNodeRecords::numberOf(SoNode const* node) const
{
    Entry const* const entry = findAddress(records, node);
    return entry != nullptr ? static_cast<std::uint32_t>(entry - records.data()) : none;
}

void FltNodeRecords::addParts(SoNode const& root)
{
    std::unordered_set<SoNode const*> shared; // what only one node holds is met once
    std::vector<Part> waiting{{&root, none}};
    while (!waiting.empty()) {
        auto const [node, above] = waiting.back();
        waiting.pop_back();
        if (node->getRefCount() > 1 && !shared.insert(node).second)
            continue;
        std::uint32_t const own = numberOf(node);
        std::uint32_t const number = own != none ? own : above;
        if (own == none && number != none)
            parts.emplace_back(node, number);
        forEachBelow(*node, [&](SoNode const* below) { waiting.emplace_back(below, number); });
    }
    sortByAddress(parts);
}

FltNodeRecords::Entry const* FltNodeRecords::find(SoNode const& node) const
{
    if (Entry const* const own = findAddress(records, &node))
        return own;
    Part const* const part = findAddress(parts, &node);
    return part != nullptr ? &records[part->second] : nullptr;
}

FltNodeRecords::Record const* FltNodeRecords::findPart(SoNode const& shape, int number) const
{
    Shape const* const known = findAddress(shapes, &shape);
    if (known == nullptr)
        return nullptr;
    auto const next =
        std::upper_bound(known->second.begin(), known->second.end(), number,
                         [](int wanted, FltMesh::Part const& part) { return wanted < part.first; });
    return next != known->second.begin() ? &std::prev(next)->record : nullptr;
}
