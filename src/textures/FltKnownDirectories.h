#pragma once

#include "textures/FltReadableTree.h"

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// Looks for files below directories, by names that databases hold. Each directory is read once for the life
/// of the object, whatever names lead to it.
///
/// A search comes to no directory twice with the same rest of the name, so that its work is bounded by the
/// parts of the name times the directories that they lead to.
class FltKnownDirectories
{
public:
    /// @param readable no other file is found, and no other directory looked into
    explicit FltKnownDirectories(FltReadableTree readable) : readable(std::move(readable)) {}

    /// Whether a file that is there will do.
    /// @param file open for reading; what stands under the path may be another one by now
    using Accept = std::function<bool(std::string const& path, OpenFile const& file)>;

    /// The parts of a path.
    using Parts = std::vector<std::string>;

    /// How exact a name has to be.
    struct Way {
        bool ignoresCase;
        bool changesEnding;
    };

private:
    /// A directory that was looked into.
    struct Directory {
        std::string path;        ///< By which it was met first, with a slash at its end.
        bool isComplete = false; ///< If not, the directory can't be read, and each name has to be tried.
        std::unordered_set<std::string> names;
        std::unordered_map<std::string, std::vector<std::string>> byLowerCase;
        std::unordered_map<std::string, Directory*> below; ///< What names in it lead to.
    };

public:
    /// Directories that were come to with a number of parts of the name left, and nothing was found.
    using Visited = std::set<std::pair<Directory const*, std::ptrdiff_t>>;

    /// The name with slashes for backslashes.
    static std::string withSlashes(std::string name);

    /// The parts of a path, without empty ones and those that say "here".
    static Parts partsOf(std::string const& path);

    /// Looks for a name from a directory on.
    /// @param place   the directory, with a slash at its end
    /// @param part    the first part of the name; there has to be one
    /// @param visited of the searches in the same way before this one, for the same end
    /// @return the path; empty if nothing was found
    std::string find(Way way, std::string const& place, Parts::const_iterator part, Parts::const_iterator end,
                     Visited& visited, Accept const& accept);

private:
    /// A directory that a search has come to.
    struct Stop {
        Directory* directory;
        std::string path; ///< As the search has spelled it, with a slash at its end.
    };

    std::vector<Stop> stepInto(Way way, std::vector<Stop> const& stops, std::string const& part);
    static std::vector<std::string> matches(Way way, Directory const& directory, std::string const& name);
    Directory* directoryAt(std::string const& place);
    Directory* directoryBelow(Directory& parent, std::string const& name);
    Directory* read(std::string const& path);

    FltReadableTree readable;
    std::unordered_map<std::string, Directory*> places; ///< Null for one that isn't there.
    std::map<OpenFile::Identity, Directory> known;
};
