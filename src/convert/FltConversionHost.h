#pragma once

#include "parser/FltParseHost.h"
#include "toolkit/OpenFile.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoTexture2.h>
#include <cstddef>
#include <string>

/// Takes part in a conversion: learns what happens in it, and decides what is left to the caller. One object
/// serves the conversion of a file and of all that it refers to. Without one a conversion does what the
/// plug-in does.
///
/// Each function may throw, which ends the conversion.
class FltConversionHost : public FltParseHost
{
public:
    /// So many of the records of a file are converted. Comes once in a while.
    virtual void takeConverted(FltInput const& file, std::size_t records, std::size_t inAll) = 0;

    /// A file and what it refers to is converted.
    virtual void endFile(FltInput const& file) = 0;

    /// Makes the node of a texture.
    /// @param name as the file names it
    virtual SoNodeRef<SoTexture2> makeTexture(FltInput const& file, std::string const& name) = 0;

    /// There is a reference to another file.
    /// @param name    as the file names it
    /// @param path    what is opened for it, its backslashes taken as slashes
    /// @param isThere whether that can be opened
    /// @return whether to follow it; not asked for if it isn't there
    virtual bool beginReference(FltInput const& file, std::string const& name, std::string const& path,
                                bool isThere) = 0;

    /// The file of the reference that began last and is followed, open for reading; none if that can't be
    /// opened. Asked for once, if at all: a file that was converted already isn't read again.
    virtual OpenFile takeReferencedFile() = 0;

    /// The reference that began last is done.
    /// @param isLoaded whether a scene stands in its place
    virtual void endReference(bool isLoaded) = 0;
};
