#pragma once

#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A kind of thing that a check finds. Numbers and meanings never change; new kinds get new numbers.
///
/// | Numbers  | About                                                        |
/// |----------|--------------------------------------------------------------|
/// | 101 ..   | records and their framing                                    |
/// | 201 ..   | vertices, faces and meshes                                   |
/// | 301 ..   | palettes                                                     |
/// | 401 ..   | other files                                                  |
/// | 501 ..   | the hierarchy                                                |
/// | 601 ..   | levels of detail, switches, degrees of freedom, matrices     |
/// | 701 ..   | the unit of the database                                     |
/// | 801 ..   | what the exact conversion loses                              |
/// | 901 ..   | what the complete conversion loses                           |
struct FltFindingKind {
    enum class Severity {
        note,    ///< All is seen, but better done otherwise.
        warning, ///< Something isn't seen, or not as it was meant.
        error,   ///< The file is damaged, or a part of it can't be used.
    };

    int number;
    Severity severity;
    std::string_view title; ///< What is found: "A vertex list names no vertex".
    std::string_view why;   ///< Why it matters.
    std::string_view mend;  ///< How to mend it.

    /// "FLT-101"
    std::string code() const { return "FLT-" + std::to_string(number); }
};

/// All kinds, by ascending number.
class VELLOREADER_API FltFindingTable
{
public:
    static FltFindingKind const* begin();
    static FltFindingKind const* end();

    /// The kind of a number, which has to be one of the table's.
    static FltFindingKind const& of(int number);

    /// The kind of a code such as "FLT-101"; null if there is none.
    static FltFindingKind const* find(std::string_view code);
};

/// Something that a check found in a database.
struct FltFinding {
    static constexpr std::int64_t nowhere = -1;

    FltFindingKind const* kind = nullptr;
    std::string file;
    std::int64_t offset = nowhere; ///< Of the record, the first one if there are several.
    int opcode = 0;                ///< Of that record; 0 if it is about none.
    std::string node;              ///< The way to the node that it is about; empty if it is about none.
    std::string text;              ///< What it is here: names, numbers.
    std::uint64_t count = 1;       ///< How many records of that node it is about.
};
