#pragma once

#include "inspect/FltInventory.h"
#include "messages/FltMessageSilence.h"
#include "model/FltModel.h"

#include <cstdint>
#include <vector>

/// A database as the complete conversion reads it, beside its inventory: what is drawn is judged by this one,
/// and told by the nodes of that one. Nothing is reported while it lives.
class FltCheckedModel
{
public:
    using Number = FltModelTree::Number;
    static constexpr std::uint32_t none = FltInventory::none;

    explicit FltCheckedModel(FltInventory const& inventory);

private:
    FltMessageSilence const silence; // reading the model is silent too

public:
    FltInventory const& inventory;
    FltModel model;

    /// How many vertices the palette has. Those of faces and meshes are added behind them.
    std::uint32_t paletteVertices = 0;

    /// What a record of the hierarchy stands below.
    Number parentOf(Number number) const { return parents[static_cast<std::size_t>(number)]; }

    /// The node of the inventory that a record of the hierarchy is, or that it belongs to.
    std::uint32_t nodeOf(Number number) const { return nodes[static_cast<std::size_t>(number)]; }

    /// The record of a node of the inventory: the root for the first; FltModelTree::none if the model hasn't
    /// read it.
    Number numberOf(std::uint32_t node) const { return numbers[node]; }

    FltRecordView recordOf(Number number) const { return model.tree.recordOf(number); }

    /// Whether all of the hierarchy is known: no damage has parted it, and nothing stands in extensions or
    /// too deep.
    bool isWhole() const { return whole; }

private:
    void findParents();
    void findNodes();

    std::vector<Number> parents;
    std::vector<std::uint32_t> nodes;
    std::vector<Number> numbers;
    bool whole = true;
};
