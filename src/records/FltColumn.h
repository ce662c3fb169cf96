#pragma once

#include "records/FltColumnBytes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A field of all records of an opcode: a row of values for each record. See FltRecordReader::columns().
struct FltColumn {
    /// What a value is. The letters are those of Python's struct.
    enum class Type : char {
        flag = '?',    ///< A byte: 1 or 0.
        integer = 'q', ///< Of 64 bits.
        single = 'f',  ///< A float.
        real = 'd',    ///< A double.
        text = 's',    ///< In UTF-8, without an end: counted by bytes.
    };

    /// That of the field, "block.field" in a block, and "flags.bit" of a bit that has a name.
    std::string name;

    Type type = Type::integer; ///< Of each value.

    /// Values in a row by dimension; in each element of a row where rows are counted. Empty for a number.
    std::vector<std::size_t> shape;

    /// All rows one behind the other, in the machine's order of bytes. A record that lacks the field has a
    /// row of zeros, or none where rows are counted.
    FltColumnBytes values;

    bool isCounted = false; ///< Whether records have rows of different lengths.
    FltColumnBytes counts;  ///< The length of each: 64 bits without a sign. Empty if all are the same.

    std::vector<std::uint8_t> absences; ///< 1 for each record that lacks the field; empty if none does.
};
