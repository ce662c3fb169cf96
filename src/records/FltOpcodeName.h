#pragma once

#include "toolkit/VelloReaderExport.h"

#include <string>

/// What the records of an opcode are called, also of those that have no class.
class VELLOREADER_API FltOpcodeName
{
public:
    /// "vertex palette". "record 300" for an opcode that the format doesn't have.
    static std::string of(int opcode);

    /// Whether the format has records of this opcode.
    static bool isKnown(int opcode);
};
