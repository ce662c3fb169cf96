#pragma once

#include "toolkit/VelloReaderExport.h"

#include <string>
#include <string_view>

/// Text as files have it, which may be of any bytes.
class VELLOREADER_API FltText
{
public:
    /// The text in UTF-8: as it stands if it is that already, otherwise read as Latin-1.
    static std::string utf8(std::string_view text);

    /// The text as a terminal may see it: control characters, and bytes that aren't UTF-8, become "\x1b" and the like.
    /// @param keepsLines whether an end of line stays one
    static std::string printable(std::string_view text, bool keepsLines = false);
};
