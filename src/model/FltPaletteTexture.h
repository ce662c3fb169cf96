#pragma once

#include "model/FltRecordView.h"
#include "records/FltRecordTexturePattern.h"

#include <algorithm>

/// A record of the texture palette. One that is shorter than the form with a short file name has that one's
/// layout.
struct FltPaletteTexture : FltRecordTexturePattern {
    explicit FltPaletteTexture(FltRecordView const& record)
        : FltRecordTexturePattern(std::max(record.classLength(), shortFormLength))
    {
        record.decodeTo<FltRecordTexturePattern>(*this);
    }
};
