#include "inspect/FltFindingList.h"

#include <algorithm>
#include <tuple>

FltFinding* FltFindingList::addHere(int number, std::int64_t offset, int opcode, std::string text,
                                    std::uint64_t count)
{
    if (kept[number] == mostOfAKind) {
        ++notKept[number];
        return nullptr;
    }
    ++kept[number];
    found.push_back(
        {&FltFindingTable::of(number), inventory.path(), offset, opcode, "", std::move(text), count});
    return &found.back();
}

void FltFindingList::add(int number, std::uint64_t offset, int opcode, std::uint32_t node,
                         std::string const& text)
{
    constexpr std::size_t notThere = SIZE_MAX;
    auto const [entry, isNew] = positions.try_emplace({number, node}, found.size());
    if (!isNew) {
        if (entry->second != notThere)
            ++found[entry->second].count;
        return;
    }
    FltFinding* const finding = addHere(number, static_cast<std::int64_t>(offset), opcode, text);
    if (finding == nullptr)
        entry->second = notThere;
    else if (node != FltInventory::none)
        finding->node = inventory.pathOf(node);
}

std::vector<FltFinding> FltFindingList::sorted() const
{
    std::vector<FltFinding> list = found;
    std::stable_sort(list.begin(), list.end(), [](FltFinding const& a, FltFinding const& b) {
        return std::tie(a.kind->number, a.offset) < std::tie(b.kind->number, b.offset);
    });
    return list;
}
