#pragma once

#include "loader/FltScene.h"
#include "loader/FltVisual.h"

#include <optional>

/// A part of a visual as a visual of its own.
namespace VisualPart
{

/// The part that comes from a record, where it stands first. What moves it stays above it; what hides it, or
/// chooses between it and others (switches, levels of detail, flip-books), doesn't.
/// @param whole shares its nodes with the part, of which none is hidden by itself any more
/// @return none if nothing of the visual comes from the record
std::optional<FltVisual> of(FltVisual whole, FltRecordPlace const& place);

} // namespace VisualPart
