#pragma once

#include "toolkit/VelloReaderExport.h"

#include <iosfwd>
#include <string_view>

/// Where the dump of a parse goes: into std::cout, unless somebody sends it elsewhere for a while.
class VELLOREADER_API FltDumpOutput
{
public:
    /// The stream; null while nobody wants a dump, so that none needs to be formatted.
    static std::ostream* current();

    /// Writes a line, if somebody wants a dump.
    static void line(std::string_view text);

    /// Sends the dump to a stream as long as this object lives. Redirections may stand in one another.
    class VELLOREADER_API Redirect
    {
    public:
        /// @param os stays the caller's, and has to outlive this object; null drops the dump
        explicit Redirect(std::ostream* os);
        ~Redirect();

        Redirect(Redirect const&) = delete;
        Redirect& operator=(Redirect const&) = delete;

    private:
        std::ostream* before;
    };
};
