#pragma once

#include "complete/FltScenePart.h"
#include "model/FltPaletteSet.h"

/// Makes the nodes of light sources.
class FltLightNodes
{
public:
    /// The light of a record; without a node if it is switched off.
    static FltScenePart make(FltRecordView const& record, FltPaletteSet const& palettes);
};
