#pragma once

#include "textures/FltReadableTree.h"
#include "toolkit/VelloReaderExport.h"

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// Looks for the files of textures. Databases are made on one machine and shown on another, so what they name
/// is seldom where they say.
///
/// A name is looked for in the directories of the database and of the file that names it, in those given, and
/// in the toolkit's own, in this order of ways: the path as stored, with slashes for backslashes; its tails,
/// the longest first, down to the last part alone; the last part in a folder such as "textures"; what the
/// toolkit's own search finds. Then all of it again without regard to the case of letters, and again with
/// another known ending.
///
/// Each directory is read once for the life of the object, whatever names lead to it. A search comes to no
/// directory twice with the same rest of the name, so that its work is bounded by the parts of the name times
/// the directories that they lead to.
class VELLOREADER_API FltTextureSearch
{
public:
    /// Whether a file that is there will do.
    /// @param file open for reading; what stands under the path may be another one by now
    using Accept = std::function<bool(std::string const& path, OpenFile const& file)>;

    /// @param directories to search besides those of the databases
    /// @param readable    no other file is found, and no other directory looked into
    explicit FltTextureSearch(std::vector<std::string> directories,
                              FltReadableTree readable = FltReadableTree());

    struct Result {
        std::string path; ///< Empty if nothing was found.
        std::vector<std::string>
            tried; ///< Then: places where it could stand, that beside the file that names it first.
        std::size_t otherDirectories =
            0; ///< Then: those that were looked into besides that of the first place.
    };

    /// @param name           as stored
    /// @param ownDirectories of the top-level database, and last of the file that names the texture
    Result find(std::string const& name, std::vector<std::string> const& ownDirectories,
                Accept const& accept);

private:
    /// A directory that was looked into.
    struct Directory {
        std::string path;        ///< By which it was met first, with a slash at its end.
        bool isComplete = false; ///< If not, the directory can't be read, and each name has to be tried.
        std::unordered_set<std::string> names;
        std::unordered_map<std::string, std::vector<std::string>> byLowerCase;
        std::unordered_map<std::string, Directory*> below; ///< What names in it lead to.
    };

    /// A directory that a search has come to.
    struct Stop {
        Directory* directory;
        std::string path; ///< As the search has spelled it, with a slash at its end.
    };

    /// Directories that were come to with a number of parts of the name left, and nothing was found.
    using Visited = std::set<std::pair<Directory const*, std::ptrdiff_t>>;

    /// How exact a name has to be.
    struct Way {
        bool ignoresCase;
        bool changesEnding;
    };

    using Parts = std::vector<std::string>;

    static Result notFound(std::string const& name, Parts const& parts,
                           std::vector<std::string> const& places);
    std::string findBy(Way way, std::string const& name, Parts const& parts,
                       std::vector<std::string> const& places, Accept const& accept);
    std::string findBelow(Way way, std::string const& place, Parts::const_iterator part,
                          Parts::const_iterator end, Visited& visited, Accept const& accept);
    std::vector<Stop> stepInto(Way way, std::vector<Stop> const& stops, std::string const& part);
    static std::vector<std::string> matches(Way way, Directory const& directory, std::string const& name);
    Directory* directoryAt(std::string const& place);
    Directory* directoryBelow(Directory& parent, std::string const& name);
    Directory* read(std::string const& path);

    std::vector<std::string> directories;
    FltReadableTree readable;
    std::unordered_map<std::string, Directory*> places; ///< Null for one that isn't there.
    std::map<OpenFile::Identity, Directory> known;
};
