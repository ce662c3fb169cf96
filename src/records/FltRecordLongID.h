#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <memory>

/// The full name of the node before, where the eight characters of its own record don't hold it.
class FltRecordLongID : public FltRecordOf<FltRecordLongID, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::longID;
    static constexpr std::string_view title = "\n LONG_ID RECORD ";

    /// The name with a zero after it; null before the record is decoded. Zeros inside the name are kept.
    std::unique_ptr<char[]> idASCII;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.rest("idASCII", self.idASCII, self.length);
    }
};
