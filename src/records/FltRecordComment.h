#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <memory>

/// A comment on the record before.
///
/// | Offset | Type               | Field             |
/// |--------|--------------------|-------------------|
/// | 4      | char[length - 4]   | `textDescription` |
class FltRecordComment : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::comment; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

    /// The text with a zero behind it; null before the record is decoded. Zeros inside the text are kept.
    std::unique_ptr<char[]> textDescription;
};
