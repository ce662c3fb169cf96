#pragma once

#include "report/MergedReports.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// A map of databases, each where it is on the earth, or where its coordinates are in a map. Each has a class
/// for its time, its triangles and its trouble, by which a style colours it; north is up.
class TileMap
{
public:
    /// What databases are coloured by.
    enum class Colour { time, triangles, trouble };

    /// @param databases those without a place aren't on the map: of which nothing is to be seen, or which
    ///                  have no origin where others have one
    explicit TileMap(MergedReports::Lines const& databases);

    bool isEmpty() const { return tiles.empty(); }
    std::size_t placed() const { return count; } ///< Databases on the map.

    /// As SVG. An element has a class for each kind of colour: "a0" to "a4" for the time, "b0" to "b4" for
    /// the triangles, "c0" to "c3" for the trouble.
    std::string svg() const;

    /// What the classes of a colour mean, from the first one on.
    std::vector<std::string> legend(Colour colour) const;

private:
    struct Tile {
        double west, south, east, north;
        double seconds, triangles;
        std::size_t trouble;
        std::string text;
        std::size_t databases = 1; ///< More than one where there are too many to be seen by themselves.
    };
    using Limits = std::array<double, 4>; ///< Of the classes: the largest of the first ones.

    static std::vector<Tile> placed(MergedReports::Lines const& databases);
    void join();
    static Limits limitsOf(std::vector<double> values);
    static std::size_t classOf(double value, Limits const& limits);

    std::vector<Tile> tiles;
    std::size_t count = 0;
    double west = 0, south = 0, east = 0, north = 0;
    Limits timeLimits{}, triangleLimits{};
};
