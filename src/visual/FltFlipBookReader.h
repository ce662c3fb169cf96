#pragma once

#include "model/FltRecordView.h"
#include "visual/FltVisualFlipBook.h"

#include <cstddef>
#include <optional>

/// Reads the flip-book that the record of a group may be.
namespace FltFlipBookReader
{

/// Whether the record is that of a group whose children are played.
bool isAnimated(FltRecordView const& record);

/// @param record   that of an animated group
/// @param revision of the file
/// @param frames   how many children the group has
/// @return nothing for a single frame
std::optional<FltVisualFlipBook> read(FltRecordView const& record, int revision, std::size_t frames);

} // namespace FltFlipBookReader
