#pragma once

#include <string>
#include <vector>

/// A kind of database that may have any number of something.
struct SceneCase {
    char const* name;
    void (*write)(std::string const& path, int count);
    int count; ///< To begin with.

    /// All kinds. Some refer to a file "other.flt" beside them: see writeOther().
    static std::vector<SceneCase> const& all();

    /// A database of nothing: what its conversion takes is no matter of the items.
    static void writeEmpty(std::string const& path);

    /// The file that others refer to.
    static void writeOther(std::string const& path);
};
