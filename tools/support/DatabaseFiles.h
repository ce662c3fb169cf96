#pragma once

#include <string>
#include <vector>

/// Databases by their files.
struct DatabaseFiles {
    std::vector<std::string> files;
    std::vector<std::string> problems; ///< Why directories couldn't be read or hold none, a sentence each.

    /// All in a directory and those below it, by name: what ends in ".flt", in letters of any case. Links to
    /// directories aren't followed.
    static DatabaseFiles below(std::string const& directory);

    /// Those that a command line names: files as they are, whether they are there or not, and in place of
    /// each directory what is below it.
    static DatabaseFiles named(std::vector<std::string> const& inputs);

    static bool isDirectory(std::string const& path);

    /// Whether a command line names one file alone, which nothing has to be told apart from.
    static bool isOneFile(std::vector<std::string> const& inputs);
};
