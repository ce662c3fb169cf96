#pragma once

#include "records/FltRecord.h"
#include "records/FltRecordMemory.h"

#include <cstddef>
#include <string_view>

class FltDump;

/// A record with its length and the frame that every dump begins with.
class AbstractFltRecord : public FltRecord
{
public:
    explicit AbstractFltRecord(unsigned int length) : length(length) {}
    ~AbstractFltRecord() override { length = 0; }

    AbstractFltRecord(AbstractFltRecord const&) = delete;
    AbstractFltRecord& operator=(AbstractFltRecord const&) = delete;

    static void* operator new(std::size_t size) { return FltRecordMemory::allocate(size); }
    static void operator delete(void* record, std::size_t size) { FltRecordMemory::free(record, size); }

    unsigned int getLength() const override { return length; }

    /// Writes the category line and the line with opcode and length. @return @p os
    virtual std::ostream& opcodeAndLength(std::ostream& os) const;

    /// Writes @p title and the lines of opcodeAndLength().
    void writeHead(FltDump& dump, std::string_view title) const;

protected:
    /// Writes @p title, an end of line, and opcodeAndLength(). @return @p os
    std::ostream& titleOpcodeAndLength(std::ostream& os, std::string_view title) const;

    unsigned int length; ///< Bytes of the record in the file, opcode and length words included.

private:
    void writeOpcodeAndLength(FltDump& dump) const;
};

/// A node of the hierarchy, or a part of one: it may have ancillary records and a level after it.
class PrimaryFltRecord : public AbstractFltRecord
{
public:
    using AbstractFltRecord::AbstractFltRecord;
    static constexpr FltRecordCategory category = FltRecordCategory::primary;
    std::string getRecordCategory() const override { return std::string(nameOf(getCategory())); }
    FltRecordCategory getCategory() const override { return category; }
};

/// A record that says more of the primary record before it.
class AncillaryFltRecord : public AbstractFltRecord
{
public:
    using AbstractFltRecord::AbstractFltRecord;
    static constexpr FltRecordCategory category = FltRecordCategory::ancillary;
    std::string getRecordCategory() const override { return std::string(nameOf(getCategory())); }
    FltRecordCategory getCategory() const override { return category; }
};

/// A record that opens or closes a level, or places an instance.
class ControlFltRecord : public AbstractFltRecord
{
public:
    using AbstractFltRecord::AbstractFltRecord;
    static constexpr FltRecordCategory category = FltRecordCategory::control;
    std::string getRecordCategory() const override { return std::string(nameOf(getCategory())); }
    FltRecordCategory getCategory() const override { return category; }
};

/// An entry of one of the file's shared tables.
class PaletteFltRecord : public AbstractFltRecord
{
public:
    using AbstractFltRecord::AbstractFltRecord;
    static constexpr FltRecordCategory category = FltRecordCategory::palette;
    std::string getRecordCategory() const override { return std::string(nameOf(getCategory())); }
    FltRecordCategory getCategory() const override { return category; }
};
