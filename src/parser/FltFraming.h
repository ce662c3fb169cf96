#pragma once

#include "records/FltUtils.h"

#include <cstddef>
#include <string>

/// Goes through the bytes of a database record by record.
///
/// A record begins with a 16-bit opcode and a 16-bit length, both big-endian; the length counts the whole
/// record, and so leads to the next one.
class FltFraming
{
public:
    /// Where and why the records end before the bytes do.
    enum class Fault {
        none,
        cutHead,    ///< Fewer than four bytes are left.
        zeroLength, ///< A record's length doesn't lead to a next one.
        pastEnd     ///< A record ends after the bytes do.
    };

    /// @param begin the first byte. The bytes belong to the caller.
    FltFraming(char const* begin, std::size_t size) : begin(begin), size(size) {}

    /// Goes on to the next record.
    /// @return whether there is one
    bool next()
    {
        if (fault != Fault::none)
            return false;
        offset += length;
        opcode = 0;
        length = 0;
        std::size_t const rest = size - offset;
        if (rest < headSize) {
            fault = rest == 0 ? Fault::none : Fault::cutHead;
            return false;
        }
        opcode = FltUtils::word16At(data());
        length = FltUtils::word16At(data() + 2);
        if (length == 0)
            fault = Fault::zeroLength;
        else if (length > rest)
            fault = Fault::pastEnd;
        return fault == Fault::none;
    }

    /// Has next() go on with the record that begins at a byte; with none if there is no such byte.
    void goTo(std::size_t newOffset);

    /// @name The record
    /// @{
    char const* data() const { return begin + offset; }
    std::size_t getOffset() const { return offset; }
    int getOpcode() const { return opcode; }
    unsigned int getLength() const { return length; }
    /// @}

    /// Why next() found no further record; getOffset() is where.
    Fault getFault() const { return fault; }

    /// The fault in words, and what it costs.
    /// @{
    std::string faultText() const;
    std::string costText() const { return ": " + restFrom(offset, size) + ", is left out"; }
    /// @}

    /// "the rest of the file, N bytes from byte offset M on"
    static std::string restFrom(std::size_t offset, std::size_t size);

private:
    static constexpr std::size_t headSize = 4; ///< Bytes of opcode and length.

    char const* begin;
    std::size_t size;
    std::size_t offset = 0;
    int opcode = 0;
    unsigned int length = 0; ///< 0 before the first record.
    Fault fault = Fault::none;
};
