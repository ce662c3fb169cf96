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

    /// The text as it is safe on a terminal: control characters, and bytes that aren't UTF-8, become "\x1b"
    /// and the like.
    /// @param keepsLines whether ends of lines are kept
    static std::string printable(std::string_view text, bool keepsLines = false);
};
