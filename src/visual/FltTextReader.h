#pragma once

#include "model/FltPaletteSet.h"
#include "visual/FltNodeBuilder.h"

#include <string>

/// Reads text.
namespace FltTextReader
{

/// Makes a node the text of a record, unless there is none.
/// @param text what is written, in lines
void addTo(FltNodeBuilder& node, FltRecordView const& record, std::string const& text,
           FltPaletteSet const& palettes);

} // namespace FltTextReader
