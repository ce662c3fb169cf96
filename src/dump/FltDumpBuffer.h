#pragma once

#include <streambuf>

/// A stream buffer into whose block a dump writes straight, without the steps of a stream in between.
///
/// A flush of such a buffer does nothing, so a line may as well leave it out.
class FltDumpBuffer : public std::streambuf
{
public:
    /// @name The rest of the block
    /// @{
    char* roomBegin() const { return pptr(); }
    char* roomEnd() const { return epptr(); }
    /// @}

    /// Takes what was written into the block from roomBegin() up to @p end.
    void taken(char const* end) { pbump(static_cast<int>(end - pptr())); }

    /// Hands the block on, and begins it anew.
    virtual void write() = 0;

    /// The buffer of the log that is being written, or null: a dump knows its stream's buffer by it.
    static FltDumpBuffer* current;
};
