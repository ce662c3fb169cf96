#pragma once

/// Numbers as text.
class FltNumberText
{
public:
    /// Characters that write() needs at the most.
    static constexpr int longest = 24;

    /// Writes @p value as printf's "%g" does, to six digits: the same characters in every case, whatever the
    /// locale. @return behind the last one
    static char* write(char* at, double value);
};
