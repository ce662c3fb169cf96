#pragma once

#include "toolkit/VelloReaderExport.h"

#include <string>
#include <string_view>

/// Text from files, which may hold any bytes.
class VELLOREADER_API FltText
{
public:
    /// The text in UTF-8: unchanged if it is that already, otherwise read as Latin-1.
    static std::string utf8(std::string_view text);

    /// The text without blanks and ends of lines at its end.
    static std::string withoutEnd(std::string text);

    /// The text as it is safe on a terminal: control characters (those of eight bits, separators of lines and
    /// turns of the direction of text among them), and bytes that aren't UTF-8, become "\x1b" and the like.
    /// @param keepsLines whether ends of lines are kept
    static std::string printable(std::string_view text, bool keepsLines = false);

    /// JSON that says the same and is safe on a terminal: the same characters become "\u009b" and the like.
    /// @param json valid, and so in UTF-8
    static std::string printableJson(std::string_view json);
};
