#pragma once

#include "records/FltRecord.h"

#include <typeinfo>

/// A record as a class that it is of, or null, as dynamic_cast gives it: in a moment where it is of that very
/// class, which is nearly always so.
template <class Record>
Record const* recordCast(FltRecord const* record)
{
    if (record != nullptr && typeid(*record) == typeid(Record))
        return static_cast<Record const*>(record);
    return dynamic_cast<Record const*>(record);
}
