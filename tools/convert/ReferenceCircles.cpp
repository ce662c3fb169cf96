#include "convert/ReferenceCircles.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace
{

constexpr std::size_t unseen = std::numeric_limits<std::size_t>::max();

/// Tarjan's search in depth, without recursion.
class GroupSearch
{
public:
    explicit GroupSearch(ReferenceCircles::Edges const& edges)
        : edges(edges), order(edges.size(), unseen), lowest(edges.size(), unseen), isOpen(edges.size())
    {
    }

    std::vector<std::vector<std::size_t>> groups()
    {
        for (std::size_t node = 0; node < edges.size(); ++node)
            if (order[node] == unseen)
                visit(node);
        return std::move(found);
    }

private:
    struct Step {
        std::size_t node;
        std::size_t next; ///< The edge that comes next.
    };

    void enter(std::size_t node)
    {
        order[node] = lowest[node] = count++;
        isOpen[node] = true;
        open.push_back(node);
        way.push_back({node, 0});
    }

    void visit(std::size_t root)
    {
        enter(root);
        while (!way.empty()) {
            Step& step = way.back();
            std::size_t const node = step.node;
            if (step.next == edges[node].size()) {
                leave(node);
                continue;
            }
            std::size_t const target = edges[node][step.next++];
            if (order[target] == unseen)
                enter(target);
            else if (isOpen[target])
                lowest[node] = std::min(lowest[node], order[target]);
        }
    }

    void leave(std::size_t node)
    {
        way.pop_back();
        if (!way.empty())
            lowest[way.back().node] = std::min(lowest[way.back().node], lowest[node]);
        if (lowest[node] != order[node])
            return;
        std::vector<std::size_t> group;
        do {
            group.push_back(open.back());
            isOpen[open.back()] = false;
            open.pop_back();
        } while (group.back() != node);
        std::sort(group.begin(), group.end());
        found.push_back(std::move(group));
    }

    ReferenceCircles::Edges const& edges;
    std::vector<std::size_t> order;  ///< In which nodes were met.
    std::vector<std::size_t> lowest; ///< The earliest open node that a node leads to.
    std::vector<bool> isOpen;
    std::vector<std::size_t> open;
    std::vector<Step> way;
    std::size_t count = 0;
    std::vector<std::vector<std::size_t>> found;
};

} // namespace

std::vector<std::vector<std::size_t>> ReferenceCircles::groupsOf(Edges const& edges)
{
    return GroupSearch(edges).groups();
}
