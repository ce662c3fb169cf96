#pragma once

#include "complete/FltPaletteSet.h"
#include "complete/FltScenePart.h"

/// Makes the nodes of light sources.
class FltLightNodes
{
public:
    /// The light of a record; without a node if it is switched off.
    static FltScenePart make(FltRecordView const& record, FltPaletteSet const& palettes);
};
