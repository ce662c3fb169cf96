#pragma once

#include "tiles/FltTile.h"
#include "toolkit/VelloReaderExport.h"

#include <cstdint>
#include <string>
#include <vector>

/// What a tileset holds, and what it lacks.
struct FltTilesetReport {
    std::vector<std::string> files; ///< That were written, the one that viewers open last.

    std::uint64_t tiles = 0;  ///< Databases that have a place on the globe.
    std::uint64_t models = 0; ///< Those that only stand where others refer to them.
    std::uint64_t placed = 0; ///< Places where they stand.

    std::vector<std::string> missing; ///< Files that are referred to, but aren't there; each once.
    std::vector<std::string>
        placedTwice;                  ///< Files with a place of their own that others place, too; each once.
    std::vector<std::string> tooMany; ///< Files with so much in them that some of it is left out.
};

/// Writes 3D Tiles 1.1: what globes in browsers and engines load piece by piece, by the distance of the eye.
///
/// Tiles hang in a quadtree by latitude and longitude, whose nodes show nothing by themselves. A file holds
/// ten thousand entries at most; further ones are in files beside it. None of the .glb is read.
class VELLOREADER_API FltTileset
{
public:
    /// @param tiles with paths as seen from the directory of the tileset
    explicit FltTileset(std::vector<FltTile> tiles);

    /// Writes the tileset. What stood there stays until all of it is written.
    /// @param path of the file that viewers open; further ones are "NAME-1.json" and so on
    /// @throw FltGltfError if it can't be written, if nothing has a place, or if two databases have one file
    FltTilesetReport write(std::string const& path) const;

private:
    std::vector<FltTile> tiles;
};
