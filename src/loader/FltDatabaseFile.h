#pragma once

#include "loader/FltLoadError.h"
#include "toolkit/OpenFile.h"

#include <cstdint>
#include <string>

/// A database file that is open, and what can be said of it before, or without, its conversion.
class FltDatabaseFile
{
public:
    /// Opens a file.
    /// @throw FltLoadError that says why it can't be read: it isn't there, not regular, not permitted, or
    ///        larger than @p largestFile
    FltDatabaseFile(std::string const& path, std::uint64_t largestFile);

    std::string const& getPath() const { return path; }

    /// The name as conversions need it: with a directory, so that external references are found.
    std::string getPathWithDirectory() const { return withDirectory(path); }

    /// The file, to be read from its start.
    OpenFile open() const { return file.copy(); }

    /// Whether it begins like a database of a revision that is converted.
    bool canConvert() const;

    /// Why it isn't converted.
    FltLoadError whyNotConverted() const;

    /// The same as of an object, false for a file that can't be opened.
    static bool canConvert(std::string const& path);

    static std::string withDirectory(std::string const& path);

    /// The error for a file that there isn't enough memory for.
    static FltLoadError outOfMemory(std::string const& path);

private:
    std::string path;
    OpenFile file;
};
