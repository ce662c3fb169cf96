#pragma once

#include "model/FltLeftOut.h"
#include "model/FltRecordView.h"
#include "visual/FltObjectLook.h"
#include "visual/FltVisualOptions.h"

/// Reads what the record of an Object says of all that stands in it.
struct FltObjectReader {
    /// @param time    the time of day that is shown
    /// @param leftOut counts what the record says in vain, and an Object that isn't shown
    static FltObjectReader read(FltRecordView const& record, FltVisualOptions::TimeOfDay time,
                                FltLeftOut& leftOut);

    /// The look alone.
    static FltObjectLook lookOf(FltRecordView const& record);

    FltObjectLook look;
    bool isHidden = false; ///< At that time of day.
};
