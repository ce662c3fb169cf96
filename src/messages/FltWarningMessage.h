#pragma once

/// A message as the console keeps it. The text isn't copied: the pointer has to stay valid.
class FltWarningMessage
{
public:
    char const* message; ///< The text, with a zero after it.
    int level;           ///< 1 for a remark on the data, 2 for a damaged file that can go on, 3 for an error.
};
