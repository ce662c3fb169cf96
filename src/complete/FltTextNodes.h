#pragma once

#include "complete/FltGroupBuilder.h"
#include "model/FltPaletteSet.h"

#include <string>

/// Makes the nodes of text.
class FltTextNodes
{
public:
    /// Adds the text of a record to its group, unless there is none.
    /// @param text what is written, in lines
    static void addTo(FltGroupBuilder& group, FltRecordView const& record, std::string const& text,
                      FltPaletteSet const& palettes);
};
