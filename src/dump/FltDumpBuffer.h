#pragma once

#include <cstring>
#include <streambuf>

/// A stream buffer that takes the lines of a dump straight, without the steps of a stream in between.
///
/// A flush of such a buffer does nothing, so a line may as well leave it out.
class FltDumpBuffer : public std::streambuf
{
public:
    /// Takes @p size characters if there is room for them. @return whether there was
    bool take(char const* text, int size)
    {
        if (size > epptr() - pptr())
            return false;
        std::memcpy(pptr(), text, static_cast<std::size_t>(size));
        pbump(size);
        return true;
    }

    /// Hands on what was taken.
    virtual void write() = 0;

    /// The buffer of the dump that is being written, or null: a line knows its stream's buffer by it.
    static FltDumpBuffer* current;
};
