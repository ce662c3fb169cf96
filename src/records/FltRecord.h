#pragma once

#include "records/FltRecordCategory.h"

#include <iosfwd>
#include <string>

/// One record of an OpenFlight file, decoded.
///
/// A record is built with its length, decoded once from its bytes, dumped once, and read-only from then on.
/// The decoded fields are plain members. Records are owned by the vector of the parser that made them.
class FltRecord
{
public:
    /// The opcode that stands for the class of the record.
    virtual int getOpcode() const = 0;

    /// "PRIMARY_RECORD", "ANCILLARY_RECORD", "CONTROL_RECORD", "PALETTE_RECORD", or "" for an unknown record.
    virtual std::string getRecordCategory() const = 0;

    /// Length in bytes as the file gives it, with the four bytes of opcode and length.
    virtual unsigned int getLength() const = 0;

    /// Writes the title, the category, the opcode and the length. @return @p os
    virtual std::ostream& nameOpcodeAndLength(std::ostream& os) const = 0;

    /// Writes the whole record, a line a field. @return @p os
    virtual std::ostream& properties(std::ostream& os) const = 0;

    /// Decodes the record.
    /// @param data the record's first byte, its opcode word. The block goes on after the record's own bytes
    ///             as far as the class reads at its longest; FltParser sees to that.
    virtual void getPropertiesFromData(char* data) = 0;

    virtual ~FltRecord() = default;

    /// What getRecordCategory() says, without a text.
    virtual FltRecordCategory getCategory() const { return categoryOf(getRecordCategory()); }
};
