#pragma once

#include <cstdint>
#include <string>

/// What the loader has to say about a database: damage, something missing, or a remark.
struct FltMessage {
    /// How bad it is.
    enum class Level {
        remark = 1,  ///< The data is unusual.
        warning = 2, ///< Something is damaged or missing; the rest is there.
        error = 3,   ///< A part couldn't be used at all.
    };

    Level level = Level::warning; ///< How bad it is.
    std::string text;             ///< In UTF-8 as far as the file's own names are.
    std::string file;             ///< The file that it is about; empty if it is about none.
    std::int64_t offset = -1;     ///< Of the record's first byte in that file; -1 if it is about no record.
    int opcode = -1;              ///< Of that record; -1 if it is about none.
    int count = 1;                ///< How often it came.
};
