#pragma once

#include <cstddef>
#include <memory>

class FltRawData;
class FltRecord;

/// A record where it stands in a file, for programs that look at records one by one.
struct FltStoredRecord {
    char const* begin;   ///< Its first byte.
    char const* fileEnd; ///< One past the last byte of the file.
    int opcode;
    unsigned int length; ///< As stored, opcode and length included.
    int revision;        ///< Of the file.

    /// Bytes that the decoder reads after the record's own end; they read as zeros beyond that of the file.
    std::size_t borrowedBytes() const;

    /// Makes an object of the record's class, or a FltRecordUnknown, with nothing decoded yet.
    std::unique_ptr<FltRecord> make() const;

    /// @param record of the class that make() gives
    /// @param block  takes the bytes that the decoder reads: those who read many records have one for all
    /// @throw std::bad_alloc for counts that ask for too much or for less than nothing
    void decodeTo(FltRecord& record, FltRawData& block) const;
    void decodeTo(FltRecord& record) const; ///< The same with a block of its own.

    /// Both in one.
    /// @throw std::bad_alloc as decodeTo() does
    std::unique_ptr<FltRecord> decode() const;
};
