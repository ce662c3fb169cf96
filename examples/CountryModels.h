#pragma once

#include <string>

/// @name Databases that all tiles of a country refer to
/// Each stands on z = 0 about its own origin, in metres. Their textures are in the folder "../textures".
/// @{
std::string makeFarm(); ///< A house with windows and a barn; from afar two boxes.
std::string makeWood(); ///< A dozen trees; from afar simpler ones.
std::string makeMast(); ///< Red and white, seen from far away.
/// @}
