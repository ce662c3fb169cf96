#pragma once

#include <cstdint>
#include <string>

class FltRecord;

/// Any record as a JSON object, in one line:
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
    /// What a terminal would obey is escaped in it.
    /// @param byteOffset where the record begins in its file
    static std::string of(FltRecord const& record, std::uint64_t byteOffset);
};
