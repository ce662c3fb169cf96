#pragma once

#include "textures/FltKnownDirectories.h"
#include "toolkit/VelloReaderExport.h"

#include <string>

/// Looks for the files that external references name: where FltReferencedFile says, and if there is nothing,
/// by the same name without regard to the case of letters.
class VELLOREADER_API FltReferenceSearch
{
public:
    /// @param readable no other file is found by another case, and no other directory looked into
    explicit FltReferenceSearch(FltReadableTree readable = FltReadableTree()) : known(std::move(readable)) {}

    /// @param database  the file that refers to it
    /// @param reference as stored
    /// @return the path of the file; if none is found, the path as it is stored
    std::string find(std::string const& database, std::string const& reference);

private:
    FltKnownDirectories known;
};
