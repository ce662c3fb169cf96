#pragma once

#include "model/FltPaletteSet.h"
#include "visual/FltVisualNode.h"

#include <optional>

/// Reads light sources.
namespace FltLightReader
{

/// The light of a record; none if it is switched off.
std::optional<FltVisualLight> read(FltRecordView const& record, FltPaletteSet const& palettes);

} // namespace FltLightReader
