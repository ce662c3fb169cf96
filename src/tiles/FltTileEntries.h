#pragma once

#include "tiles/FltTile.h"
#include "tiles/FltTileEntry.h"
#include "tiles/FltTileset.h"

#include <cstddef>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Makes the entries of a tileset for databases, with their levels of detail and the models that stand in
/// them.
class FltTileEntries
{
public:
    using Json = nlohmann::ordered_json;

    /// @param tiles  have to outlive this object, as has the report, which is added to
    FltTileEntries(std::vector<FltTile> const& tiles, FltTilesetReport& report);

    /// The entry of a tile in the coordinates of the earth; nothing if there is nothing to be seen in it.
    std::optional<FltTileEntry> of(FltTile const& tile);

    /// Lowers errors in an entry to what is around it, since a viewer looks at it only where that is too
    /// coarse.
    static void limitErrors(Json& entry, double most);

    /// The members of an entry that each has.
    static Json begin(FltTileBox const& box, double error);

private:
    /// An entry in the frame of its file.
    struct Made {
        Json json;
        SbBox3d box; ///< Empty if there is nothing.
        double error = 0;
        std::size_t entries = 0;
    };

    Made make(FltTile const& tile);
    static Made chainOf(FltTile const& tile);
    Made const* modelOf(std::string const& file);

    FltTilesetReport& report;
    std::size_t mostEntries; ///< In a file.
    std::unordered_map<std::string_view, FltTile const*> byFile;
    std::map<std::string, Made> models;
    std::set<std::string> inWork;
    std::set<std::string> missing, placedTwice, tooMany;
};
