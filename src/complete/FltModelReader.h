#pragma once

#include "complete/FltLeftOut.h"
#include "complete/FltModel.h"

#include <functional>

/// Reads a database into a model.
class FltModelReader
{
public:
    /// Is called with the bytes that are read and those in all, now and then. It may end the conversion by an
    /// exception.
    using Progress = std::function<void(std::size_t done, std::size_t all)>;

    /// @param size of the file in bytes
    static void read(FltModel& model, std::size_t size, FltLeftOut& leftOut, Progress const& progress);

    /// How many metres the unit of a header is.
    static double metresPerUnit(FltRecordView const& header, int revision);
};
