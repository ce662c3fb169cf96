#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>

class FltRecord;

/// Any record as a JSON object:
///
///     {"opcode": 5, "class": "FltRecordFace", "category": "PRIMARY_RECORD", "length": 80, "offset": 1204,
///      "fields": {"idField": "f1", "drawType": 0, "flags": {"word": 0, "terrain": false, ...}, ...}}
///
/// Fields stand in the order of the file under the names of the members.
///
/// | What                     | Its value                                                                   |
/// |--------------------------|-----------------------------------------------------------------------------|
/// | number                   | number; "NaN", "Infinity" or "-Infinity" for one that JSON doesn't have     |
/// | text                     | text up to its first zero                                                   |
/// | flags                    | an object: the word, and each named bit as true or false                    |
/// | colour, vector, list     | an array; a matrix is an array of its rows                                  |
/// | several blocks of fields | an array of objects                                                         |
/// | reserved bytes, raw data | text of two hexadecimal digits a byte                                       |
///
/// Text whose bytes aren't UTF-8 is taken as Latin-1. A field that the file's revision doesn't have is
/// absent. A record whose opcode has no class gives the bytes that were kept of it as `rawData`.
class FltRecordJson
{
public:
    /// @param byteOffset where the record begins in its file
    static nlohmann::ordered_json of(FltRecord const& record, std::uint64_t byteOffset);
};
