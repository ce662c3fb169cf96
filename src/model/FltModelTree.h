#pragma once

#include "messages/FltLimits.h"
#include "model/FltLevels.h"
#include "model/FltRecordPlaces.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// The hierarchy of a database: which record stands below which.
class FltModelTree
{
public:
    using Number = std::int32_t;
    static constexpr Number none = -1;

    /// The root, which no record stands for.
    static constexpr Number root = 0;

    struct Node {
        std::uint32_t record = 0; ///< Number of its record; that of a root means nothing.
        Number firstChild = none;
        Number lastChild = none;
        Number nextSibling = none;
    };

    /// @param levelsAbove the levels that lead to the file, in those that refer to it
    explicit FltModelTree(int levelsAbove) : nodes(1), levels(root, FltLimits::hierarchyDepth - levelsAbove)
    {
    }

    /// What became of a record.
    enum class Place {
        taken,
        leftOut, ///< It stands in an extension, or in a level that is nested too deeply.
        nowhere, ///< It says more about a node, and follows none: a Pop ends what belongs to a node.
    };

    /// Adds a record that isn't a palette's or a vertex of one.
    Place add(FltRecordView const& record);

    Node const& operator[](Number number) const { return nodes[static_cast<std::size_t>(number)]; }
    FltRecordView recordOf(Number number) const
    {
        return records[nodes[static_cast<std::size_t>(number)].record];
    }

    /// The opcode of a node's record, which the file needn't be asked for.
    int opcodeOf(Number number) const
    {
        return records.opcodeOf(nodes[static_cast<std::size_t>(number)].record);
    }

    /// One more than the highest number of a node.
    Number getCount() const { return static_cast<Number>(nodes.size()); }

    /// The records that say more about a node.
    /// @{
    FltRecordPlaces::Range ancillaries(Number number) const;

    /// The first one of an opcode; nothing if there is none.
    std::optional<FltRecordView> ancillary(Number number, int opcode) const;
    /// @}

    /// Has levels left out from a record on, since they are nested too deeply. The first place is reported.
    void leaveOutFrom(FltRecordView const& record);

    /// Whether no levels were left out.
    bool isWhole() const { return whole; }

private:
    void addNode(FltRecordView const& record);
    std::size_t ancillaryBegin(Number number) const;
    bool isAncillaryAt(std::size_t record) const;

    FltRecordPlaces records;
    std::vector<Node> nodes;
    FltLevels<Number> levels;
    bool whole = true;
};
