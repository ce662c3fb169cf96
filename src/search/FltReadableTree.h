#pragma once

#include "toolkit/VelloReaderExport.h"

#include <optional>
#include <string>

/// The files that may be read: all, or those in a directory and below it. What counts is where a file really
/// is, behind links and "..".
class VELLOREADER_API FltReadableTree
{
public:
    /// @param directory nothing for all files. If it isn't there, no file may be read.
    explicit FltReadableTree(std::optional<std::string> const& directory = std::nullopt);

    /// Whether a file or a directory is one of them. One that isn't there is not, unless all are.
    bool holds(std::string const& path) const;

private:
    bool isLimited = false;
    std::string root; ///< Without links, with a slash at its end; empty if it isn't there.
};
