#pragma once

#include "model/FltPaletteSet.h"
#include "visual/FltVisualNode.h"

#include <optional>

/// Reads light sources.
namespace FltLightReader
{

/// The light of a record; none if it is switched off.
/// @param worldPerUnit how long a unit of the file is in the world
std::optional<FltVisualLight> read(FltRecordView const& record, FltPaletteSet const& palettes,
                                   double worldPerUnit);

} // namespace FltLightReader
