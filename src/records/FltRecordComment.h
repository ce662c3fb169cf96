#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <memory>

/// A comment on the record before.
class FltRecordComment : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::comment; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// The text with a zero after it; null before the record is decoded. Zeros inside the text are kept.
    std::unique_ptr<char[]> textDescription;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit.rest("textDescription", self.textDescription, self.length);
    }
};
