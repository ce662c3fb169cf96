#pragma once

#include "model/FltLeftOut.h"
#include "model/FltModel.h"

#include <functional>

/// Reads a database into a model.
class FltModelReader
{
public:
    /// Is told now and then how many bytes are read. It may end the conversion by an exception.
    using Progress = std::function<void(std::size_t done)>;

    static void read(FltModel& model, FltLeftOut& leftOut, Progress const& progress);

    /// How many metres the unit of a header is.
    static double metresPerUnit(FltRecordHeader const& header);
};
