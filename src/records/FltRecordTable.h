#pragma once

#include <cstddef>
#include <string_view>

class FltFieldColumns;
class FltFieldReceiver;
class FltJsonText;
class FltRecord;

/// How the records of one opcode are made and read.
struct FltRecordRow {
    int opcode;
    std::string_view className;

    /// A new record, not yet decoded, which is the caller's. @param revision format revision of the file
    FltRecord* (*make)(unsigned int length, int revision);

    /// Bytes from the record's first one that its decoder may read whatever the record's length says.
    std::size_t (*reach)(int revision);

    /// Bytes of the shortest record that holds all of its class's layout.
    std::size_t (*least)(int revision);

    /// Bytes of the object, what it allocates aside.
    std::size_t objectSize;

    /// Lists the fields of a record of this class; none of a record of another one.
    void (*list)(FltRecord const& record, FltFieldReceiver& receiver);
    void (*listAsJson)(FltRecord const& record, FltJsonText& json);           ///< The same.
    void (*listInColumns)(FltRecord const& record, FltFieldColumns& columns); ///< The same.
};

/// All opcodes that have a class.
class FltRecordTable
{
public:
    /// The row of an opcode; null if it has no class.
    static FltRecordRow const* find(int opcode);

    /// The reach of a record of an opcode. An opcode without a class is read up to its length.
    static std::size_t reachOf(int opcode, unsigned int length, int revision);

    /// Bytes that a whole record of an opcode has at least.
    static std::size_t leastOf(int opcode, int revision);

    /// The size of an opcode's object; 0 without a class.
    static std::size_t objectSizeOf(int opcode);
};
