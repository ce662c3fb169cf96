#pragma once

#include "toolkit/VelloReaderExport.h"

#include <Inventor/SbString.h>
#include <cstdio>

/// Operations on file names and files.
class VELLOREADER_API SbFileHelper
{
public:
    /// The text after the last dot of the name's last part: "flt" of "a.b/tower.flt". Empty if there is none.
    static SbString getExtension(SbString const& name);

    /// Opens a regular file for reading. Anything else, such as a directory or a pipe, is refused at once.
    /// @param mode "r" or "rb"
    /// @return the open file, which close() closes, or null if that fails
    static FILE* open(SbString const& name, char const* mode);

    /// Closes a file of open(). Null is allowed.
    static void close(FILE* file);
};
