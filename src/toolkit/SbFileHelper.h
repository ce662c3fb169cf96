#pragma once

#include "toolkit/VelloReaderExport.h"

#include <Inventor/SbString.h>
#include <cstdio>

/// What is to be done with the names of files, and with files.
class VELLOREADER_API SbFileHelper
{
public:
    /// The text behind the last dot of the name's last part: "flt" of "a.b/tower.flt". Empty if there is
    /// none.
    static SbString getExtension(SbString const& name);

    /// Opens a regular file; anything else, a directory or a pipe, is refused rather than waited for.
    /// @param mode "r" or "rb"; this is for reading only
    /// @return null if that fails
    static FILE* open(SbString const& name, char const* mode);

    /// Closes what open() gave. Null is fine.
    static void close(FILE* file);
};
