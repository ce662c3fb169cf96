#pragma once

/// A message as the console keeps it. The text isn't copied: the pointer has to stay valid.
class FltWarningMessage
{
public:
    char const* message;
    int level;
};
