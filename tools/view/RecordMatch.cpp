#include "view/RecordMatch.h"

#include "records/FltOpcode.h"
#include "toolkit/SoNodeName.h"

#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoNode.h>
#include <deque>
#include <unordered_set>

namespace
{

/// The records below one record by their names, those of a name in the order of the file.
class NamedRecords
{
public:
    NamedRecords(RecordFile const& file, HierarchyRecord const& parent)
    {
        for (int const child : parent.children) {
            HierarchyRecord const& record = file.hierarchy()[static_cast<std::size_t>(child)];
            add(record.name, child);
            if (record.id != record.name)
                add(record.id, child); // the outer node of a level of detail
            if (record.opcode == FltOpcode::switchNode)
                add(record.name + "_(flt_switch)", child);
        }
    }

    /// The next record of a name, and not again. @return -1 if there is none
    int take(std::string const& name)
    {
        auto const found = byName.find(name);
        if (found == byName.end())
            return -1;
        std::deque<int>& records = found->second;
        while (!records.empty()) {
            int const record = records.front();
            records.pop_front();
            if (taken.insert(record).second)
                return record;
        }
        return -1;
    }

private:
    void add(std::string const& name, int record)
    {
        if (!name.empty())
            byName[SoNodeName::uncut(name)].push_back(record);
    }

    std::unordered_map<std::string, std::deque<int>> byName;
    std::unordered_set<int> taken;
};

class Matcher
{
public:
    Matcher(RecordFile const& file, std::unordered_map<SoNode const*, int>& records)
        : file(file), records(records)
    {
    }

    void match(SoNode* root)
    {
        if (file.hierarchy().empty())
            return;
        records[root] = 0;
        seen.insert(root);
        walkBelow(root, 0);
    }

private:
    static constexpr char const* rootName = "root"; ///< Of the scene of each file.

    void walkBelow(SoNode* node, int record)
    {
        NamedRecords below(file, file.hierarchy()[static_cast<std::size_t>(record)]);
        walkChildren(node, below);
    }

    void walkChildren(SoNode* node, NamedRecords& below)
    {
        SoChildList const* const children = node->getChildren();
        for (int i = 0; children != nullptr && i < children->getLength(); ++i)
            walk((*children)[i], below);
    }

    void walk(SoNode* node, NamedRecords& below)
    {
        if (!seen.insert(node).second)
            return;
        std::string const name = SoNodeName::uncut(SoNodeName::wholeOf(*node));
        if (name == rootName)
            return; // the scene of another file
        int const record = name.empty() ? -1 : below.take(name);
        if (record < 0)
            return walkChildren(node, below);
        records[node] = record;
        walkBelow(node, record);
    }

    RecordFile const& file;
    std::unordered_map<SoNode const*, int>& records;
    std::unordered_set<SoNode const*> seen;
};

} // namespace

RecordMatch::RecordMatch(SoNode* root, RecordFile const& file)
{
    Matcher(file, records).match(root);
    for (auto const& [node, record] : records)
        nodes[record] = const_cast<SoNode*>(node); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

int RecordMatch::recordOf(SoNode const* node) const
{
    auto const found = records.find(node);
    return found != records.end() ? found->second : -1;
}

SoNode* RecordMatch::nodeOf(int record) const
{
    auto const found = nodes.find(record);
    return found != nodes.end() ? found->second : nullptr;
}
