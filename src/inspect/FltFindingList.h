#pragma once

#include "inspect/FltFinding.h"
#include "inspect/FltInventory.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

/// Collects findings. What is found several times in a node is one finding with a count. Of each kind the
/// first thousand are kept.
class FltFindingList
{
public:
    static constexpr std::uint64_t mostOfAKind = 1000;

    explicit FltFindingList(FltInventory const& inventory) : inventory(inventory) {}

    /// Adds a finding, or counts it with one of the same kind in the same node.
    void add(int number, std::uint64_t offset, int opcode, std::uint32_t node, std::string const& text);

    /// Adds a finding of its own, unless there are enough of its kind.
    /// @return null if it wasn't added; otherwise valid until the next one is
    FltFinding* addHere(int number, std::int64_t offset, int opcode, std::string text,
                        std::uint64_t count = 1);

    /// In the order of the kinds, then of the file.
    std::vector<FltFinding> sorted() const;

    /// How many findings of a kind weren't kept, by its number.
    std::map<int, std::uint64_t> const& leftOut() const { return notKept; }

private:
    FltInventory const& inventory;
    std::vector<FltFinding> found;
    std::map<std::pair<int, std::uint32_t>, std::size_t> positions; ///< In found, by kind and node.
    std::map<int, std::uint64_t> kept;
    std::map<int, std::uint64_t> notKept;
};
