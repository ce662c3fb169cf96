#pragma once

#include "records/FltVersion.h"
#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

class FltInput;
class FltRecord;

/// Where the records of a database stand, and any of them when it is asked for: for programs that show single
/// records of large files. Only places are kept, 16 bytes a record. Nothing is dumped.
///
/// The records end where FltParser ends them. Bytes that don't begin with a header record hold none.
class VELLOREADER_API FltRecordIndex
{
public:
    struct Place {
        std::size_t offset = 0; ///< Of the record's first byte.
        unsigned short length = 0;
        unsigned short opcode = 0;
    };

    /// @param input stays the caller's, and has to outlive this object
    explicit FltRecordIndex(FltInput& input);

    std::size_t size() const { return places.size(); }
    Place const& operator[](std::size_t position) const { return places[position]; }

    /// The record's bytes in the input, as many as its length says.
    char const* bytes(std::size_t position) const;

    /// Decodes a record. @throw std::bad_alloc for a record whose counts ask for too much
    std::unique_ptr<FltRecord> decode(std::size_t position) const;

    /// All fields of a record, as FltRecordJson gives them. @throw std::bad_alloc as decode() does
    nlohmann::ordered_json json(std::size_t position) const;

private:
    FltInput& input;
    FltVersion version;
    std::vector<Place> places;
};
