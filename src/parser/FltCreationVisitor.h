#pragma once

#include "records/FltVersion.h"

#include <cstddef>

class FltRawData;
class FltRecord;

/// Makes record objects of raw records. Its FltVersion part holds what the file's header says: revision 0 and
/// no RGB mode until the parser has read the header.
class FltCreationVisitor : public FltVersion
{
public:
    virtual ~FltCreationVisitor() = default;

    /// Sets @p result to the object of a raw record, decoded. The caller owns it. It may be the same object
    /// as that of the record before.
    virtual void visitFltRawData(FltRecord*& result, FltRawData const* raw) = 0;

    /// How many bytes the decoder of a record may read, counted from the record's first byte, even when the
    /// record is shorter.
    virtual std::size_t getReach(int /*opcode*/, unsigned int length) const { return length; }
};
