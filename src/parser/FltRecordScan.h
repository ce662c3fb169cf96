#pragma once

#include "parser/FltFraming.h"
#include "parser/FltRawData.h"
#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class FltFileInput;
class FltRecord;

/// Reads the records of a database one by one: one object at a time, no log, nothing on std::cout and
/// std::cerr.
///
///     for (FltRecordScan scan("airfield.flt"); scan.next();)
///         std::cout << FltRecordJson::of(*scan.record(), scan.offset()) << '\n';
///
/// It may stand anywhere: it keeps no state outside of itself, but for the length of a call that decodes a
/// record, in which it takes the library's messages. A record is decoded when it is looked into.
class VELLOREADER_API FltRecordScan
{
public:
    /// Reads the file into memory.
    /// @throw std::runtime_error if it can't be opened, or doesn't begin with a header record of a revision
    ///        that is converted
    explicit FltRecordScan(std::string const& path);
    ~FltRecordScan();

    FltRecordScan(FltRecordScan const&) = delete;
    FltRecordScan& operator=(FltRecordScan const&) = delete;

    /// Goes on to the next record. @return whether there is one
    bool next();

    /// Has next() go on with the record that begins at a byte. What records that are shorter than their
    /// layouts may cost counts from here on.
    void goTo(std::uint64_t offset);

    /// How many records of an opcode next() has yet to come to.
    std::size_t countOf(int opcode) const;

    /// @name The record
    /// @{
    std::uint64_t offset() const { return framing.getOffset(); } ///< Of its first byte in the file.
    int opcode() const { return framing.getOpcode(); }
    unsigned int length() const { return framing.getLength(); } ///< As stored, opcode and length included.

    /// The record's own bytes, from the opcode on.
    std::string_view bytes() const { return {framing.data(), framing.getLength()}; }

    /// The decoded record. Null if it can't be decoded: an object of it would take memory out of proportion.
    FltRecord const* record() const { return look().decoded.get(); }

    /// What its decoder had to say, mostly a list that promises more than the record holds.
    std::vector<std::string> const& complaints() const { return look().said; }

    /// Bytes that a record of its opcode has at least at the file's revision.
    std::size_t leastLength() const;

    /// @}

    /// @name The file
    /// @{
    int revision() const { return formatRevision; }
    std::string_view file() const { return content; }

    /// Why next() found no further record; offset() is where.
    FltFraming::Fault fault() const { return framing.getFault(); }

    /// The same for people, with what is lost; empty if the file ends with a whole record.
    std::string faultText() const
    {
        return fault() != FltFraming::Fault::none ? framing.faultText() + framing.costText() : "";
    }
    /// @}

private:
    /// What looking into the record gave.
    struct Look {
        std::unique_ptr<FltRecord> decoded;
        std::vector<std::string> said;
        bool isDone = false;
    };

    Look const& look() const;
    void decode() const;
    std::size_t bytesOfShortRecords() const;

    std::unique_ptr<FltFileInput> input;
    std::string_view content;
    FltFraming framing;
    int formatRevision = 0;
    mutable std::size_t shortRecordBytesLeft; ///< What those that are shorter than their layouts may cost.
    mutable bool toldOfTooManyShortRecords = false;
    mutable FltRawData block; ///< What the decoder of the last record was given.
    mutable Look looked;
};
