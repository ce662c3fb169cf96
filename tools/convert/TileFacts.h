#pragma once

#include "tiles/FltTile.h"

#include <nlohmann/json_fwd.hpp>

/// What a report tells of a database for a tileset.
namespace TileFacts
{

/// All but its file, which is the result itself.
nlohmann::ordered_json jsonOf(FltTile const& tile);

/// Reads what jsonOf() has made. @throw nlohmann::json::exception if something is missing or not its kind
FltTile from(nlohmann::ordered_json const& json);

} // namespace TileFacts
