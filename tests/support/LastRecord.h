#pragma once

#include "model/FltRecordView.h"
#include "writer/FltWriter.h"

#include <string>

/// The record that a writer has added last, at its place in the database.
class LastRecord
{
public:
    explicit LastRecord(FltWriter const& flt) : bytes(flt.lastRecord()), offset(flt.lastOffset()) {}

    FltRecordView view() const
    {
        return {bytes.data(), static_cast<std::uint32_t>(bytes.size()), FltUtils::word16At(bytes.data()),
                offset};
    }

private:
    std::string bytes;
    std::size_t offset;
};
