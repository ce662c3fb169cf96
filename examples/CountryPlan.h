#pragma once

#include <string>

/// Where the tiles of a country are, in its folders and on the ground.
class CountryPlan
{
public:
    /// How tiles are spread over folders.
    enum class Folders {
        rows,  ///< A folder for each row from south to north: row_0003/tile_0003_0007.flt.
        quads, ///< A square's four quarters are folders: quad/0/2/1/tile_0003_0007.flt.
    };

    /// @param tiles how many, in rows from the south-west that are as long as the country is wide
    CountryPlan(int tiles, Folders folders);

    int size() const { return tiles; }
    int row(int tile) const { return tile / columns; }
    int column(int tile) const { return tile % columns; }

    /// The place of a tile's south-west corner, counted in tiles from the middle of the country to the east.
    int eastward(int tile) const { return column(tile) - columns / 2; }
    int northward(int tile) const { return row(tile) - columns / 2; }

    /// A tile's folder below that of the country.
    std::string folderOf(int tile) const;

    /// The name of a tile in its folder.
    std::string nameOf(int tile) const;

    /// What leads from a tile's folder to that of the country: "../" for each folder.
    std::string wayBack() const;

    /// Whether a tile is one of so many in a hundred, which are spread evenly.
    static bool isOneOf(double percent, int tile);

private:
    static int countOf(double percent, int tiles);

    int tiles;
    int columns;
    int levels; ///< How often the square about the country is cut into quarters.
    Folders folders;
};
