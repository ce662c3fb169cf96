#pragma once

#include "search/FltReadableTree.h"
#include "toolkit/VelloReaderExport.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
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
/// Each directory is read once for the life of the object.
class VELLOREADER_API FltTextureSearch
{
public:
    /// Whether a file that is there will do.
    using Accept = std::function<bool(std::string const& path)>;

    /// @param directories to search besides those of the databases
    /// @param readable    no other file is found, and no other directory looked into
    explicit FltTextureSearch(std::vector<std::string> directories,
                              FltReadableTree readable = FltReadableTree());

    struct Result {
        std::string path; ///< Empty if nothing was found.
        std::vector<std::string>
            tried; ///< Then: the places that a person would look at, the likeliest first.
    };

    /// @param name           as stored
    /// @param ownDirectories of the top-level database and of the file that names the texture
    Result find(std::string const& name, std::vector<std::string> const& ownDirectories,
                Accept const& accept);

private:
    /// The names in a directory.
    struct Listing {
        bool isComplete = false; ///< If not, the directory can't be read, and each name has to be tried.
        std::unordered_set<std::string> names;
        std::unordered_map<std::string, std::vector<std::string>> byLowerCase;
    };

    /// How exact a name has to be.
    struct Way {
        bool ignoresCase;
        bool changesEnding;
    };

    using Parts = std::vector<std::string>;

    std::string findBy(Way way, std::string const& name, Parts const& parts,
                       std::vector<std::string> const& places, Accept const& accept);
    std::string findBelow(Way way, std::string const& directory, Parts::const_iterator part,
                          Parts::const_iterator end, Accept const& accept);
    std::vector<std::string> matches(Way way, std::string const& directory, std::string const& name);
    Listing const& listingOf(std::string const& directory);
    bool isReadableFile(std::string const& path) const;

    std::vector<std::string> directories;
    FltReadableTree readable;
    std::unordered_map<std::string, Listing> listings;
};
