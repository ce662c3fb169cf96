#pragma once

#include "tiles/FltTileEntry.h"

#include "loader/FltProjection.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// Hangs tiles in a quadtree by latitude and longitude. Its nodes show nothing by themselves.
class FltTileTree
{
public:
    /// Gives the entry of a tile in the coordinates of the earth.
    using EntryOf = std::function<FltTileEntry(std::size_t tile)>;

    /// Takes a part of the tree that gets a file of its own. @return the address of the file
    using FileOf = std::function<std::string(FltTileEntry const& part)>;

    /// @param places of the tiles, by their numbers; have to outlive this object
    FltTileTree(std::vector<FltProjection::Place> const& places, EntryOf entryOf, FileOf fileOf);

    /// The whole tree, of at most ten thousand entries: the rest is in other files. There is a tile at least.
    FltTileEntry make();

private:
    using Tiles = std::vector<std::size_t>;

    FltTileEntry make(Tiles const& tiles, std::size_t level);
    FltTileEntry joined(Tiles const& tiles, std::vector<FltTileEntry> parts);
    static void finish(FltTileEntry& part, double mostError);
    void moveOut(FltTileEntry& part) const;
    std::vector<Tiles> quartersOf(Tiles const& tiles, std::size_t level) const;
    FltProjection::Place middleOf(Tiles const& tiles) const;

    std::vector<FltProjection::Place> const& places;
    EntryOf entryOf;
    FileOf fileOf;
};
