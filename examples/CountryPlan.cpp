#include "CountryPlan.h"

#include <cmath>
#include <cstdio>

CountryPlan::CountryPlan(int tiles, Folders folders)
    : tiles(tiles), columns(static_cast<int>(std::ceil(std::sqrt(tiles)))), levels(0), folders(folders)
{
    while (1 << levels < columns)
        ++levels;
}

std::string CountryPlan::folderOf(int tile) const
{
    if (folders == Folders::rows) {
        char name[16];
        std::snprintf(name, sizeof name, "row_%04d", row(tile));
        return name;
    }
    std::string folder = "quad";
    for (int level = levels - 1; level > 0; --level) {
        int const quarter = (row(tile) >> level & 1) * 2 + (column(tile) >> level & 1);
        folder += "/" + std::to_string(quarter);
    }
    return folder;
}

std::string CountryPlan::nameOf(int tile) const
{
    char name[32];
    std::snprintf(name, sizeof name, "tile_%04d_%04d.flt", row(tile), column(tile));
    return name;
}

std::string CountryPlan::wayBack() const
{
    std::string way = "../";
    if (folders == Folders::quads)
        for (int level = levels - 1; level > 0; --level)
            way += "../";
    return way;
}

int CountryPlan::countOf(double percent, int tiles)
{
    return static_cast<int>(std::lround(tiles * percent / 100));
}

bool CountryPlan::isOneOf(double percent, int tile)
{
    return countOf(percent, tile + 1) != countOf(percent, tile);
}
