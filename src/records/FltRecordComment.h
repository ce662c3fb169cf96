#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <memory>

/// A comment on the record before.
class FltRecordComment : public FltRecordOf<FltRecordComment, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::comment;
    static constexpr std::string_view title = "\n COMMENT RECORD ";

    /// The text with a zero after it; null before the record is decoded. Zeros inside the text are kept.
    std::unique_ptr<char[]> textDescription;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.rest("textDescription", self.textDescription, self.length);
    }
};
