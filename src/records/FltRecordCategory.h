#pragma once

#include <string_view>

/// What a record is in the hierarchy of a file.
enum class FltRecordCategory { unknown, primary, ancillary, control, palette };

/// The category as the dump names it; empty for an unknown one.
constexpr std::string_view nameOf(FltRecordCategory category)
{
    switch (category) {
    case FltRecordCategory::primary:
        return "PRIMARY_RECORD";
    case FltRecordCategory::ancillary:
        return "ANCILLARY_RECORD";
    case FltRecordCategory::control:
        return "CONTROL_RECORD";
    case FltRecordCategory::palette:
        return "PALETTE_RECORD";
    case FltRecordCategory::unknown:
        break;
    }
    return "";
}

/// The category of a name; unknown for any other text.
constexpr FltRecordCategory categoryOf(std::string_view name)
{
    for (FltRecordCategory const category : {FltRecordCategory::primary, FltRecordCategory::ancillary,
                                             FltRecordCategory::control, FltRecordCategory::palette})
        if (name == nameOf(category))
            return category;
    return FltRecordCategory::unknown;
}
