#pragma once

#include "toolkit/OpenFile.h"
#include "toolkit/VelloReaderExport.h"

#include <memory>
#include <optional>
#include <string>

/// The files that may be read: all, or those in a directory and below it. What counts is where a file really
/// is, behind links and "..".
///
/// A name is no proof of that, since another process may exchange a directory and a link at any time. So a
/// file is opened from the directory on downwards, and what was opened is read.
class VELLOREADER_API FltReadableTree
{
public:
    /// @param directory nothing for all files. If it isn't there, no file may be read.
    explicit FltReadableTree(std::optional<std::string> const& directory = std::nullopt);

    /// Whether a file or a directory is one of them at present. One that isn't there is not, unless all are.
    bool holds(std::string const& path) const;

    /// Opens a regular file for reading.
    /// @return none if that fails, with errno set: EXDEV if it is none of them, EINVAL if it isn't regular
    OpenFile open(std::string const& path) const;

    /// Opens a directory, for openat(2) alone: it needn't be permitted to be listed.
    /// @return none if that fails, with errno set: EXDEV if it is none of them
    OpenFile openDirectory(std::string const& path) const;

private:
    int openAs(std::string const& path, int flags) const;
    int openReal(std::string const& path, int flags) const;
    std::optional<std::string> nameFromRoot(std::string const& path) const;

    bool isLimited = false;
    std::string given; ///< The directory as it was named, with a slash at its end.
    std::string root;  ///< Without links, with a slash at its end; empty if it isn't there.
    std::shared_ptr<OpenFile const> rootDirectory; ///< Open for openat(2) alone.
};
