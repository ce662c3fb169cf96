#pragma once

#include "tiles/FltTileBox.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

/// A part of a tileset, and what those around it need to know.
struct FltTileEntry {
    nlohmann::ordered_json json; ///< Of a tile, until what is around it is known.
    std::string text;            ///< From then on.
    FltTileBox box;              ///< In the coordinates around it.
    double error = 0;            ///< Geometric, in metres.
    std::size_t entries = 1;     ///< In it, itself as well.
};
