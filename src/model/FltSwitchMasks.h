#pragma once

#include "model/FltRecordView.h"

#include <cstdint>
#include <vector>

/// What a record of a switch says: the masks as many as are there, whatever the counts promise.
struct FltSwitchMasks {
    explicit FltSwitchMasks(FltRecordView const& record);

    int currentMask;
    int maskCount;                    ///< As the record says.
    int wordsPerMask;                 ///< As the record says.
    std::vector<std::uint32_t> words; ///< Of all masks, one after the other.
};
