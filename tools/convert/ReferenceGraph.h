#pragma once

#include "convert/DatabaseScan.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Which databases refer to which, by their canonical paths.
class ReferenceGraph
{
public:
    /// Files that lead from one to the next, each including the next one. A reader goes down into them.
    static constexpr int longestChain = 32;

    /// Files that a reader opens for one file, each as often as it is included.
    static constexpr std::uint64_t mostInclusions = 1'000'000;

    /// Notes what a database needs.
    void add(std::string const& file, DatabaseScan const& scan);

    bool knows(std::string const& file) const { return files.count(file) != 0; }

    /// What a database refers to; nothing if it isn't known.
    std::vector<DatabaseScan::Reference> const& references(std::string const& file) const;

    /// Chooses which references may stand in converted files that include each other: those by which a reader
    /// comes to an end, and soon. A reference that would close a circle isn't among them; which one of a
    /// circle that is depends on the file where the search begins.
    /// @param roots where to begin, one after the other
    void choose(std::vector<std::string> const& roots);

    /// Chooses as choose() does, but in the same way wherever a search would begin: in a circle it is the
    /// file whose name comes first that includes the others. So parts of a tree that are converted by
    /// themselves agree on what they include.
    void chooseByNames();

    /// Whether a reference was chosen.
    bool isChosen(std::string const& from, std::string const& to) const;

    /// What textures are looked for in a directory: their names as stored, each with a database that has it.
    using TextureNames = std::unordered_map<std::string, std::string>;

    /// Where textures are looked for: in the directory of a file, those that it names; in the directories of
    /// the roots, also those of all that they lead to.
    /// @param roots the paths of files that are known
    /// @return the names by directory; an empty text is the present one
    std::map<std::string, TextureNames>
    textureSearches(std::vector<DatabaseScan::Reference> const& roots) const;

    /// Looks when the files and what they need were changed.
    /// @param withReferences whether they need the databases to which they refer
    void readTimes(bool withReferences = true);

    /// Whether a database, or something that it needs straight or through others, was changed at a time or
    /// later, by what readTimes() has found. True if any of them isn't known or isn't there.
    /// @param time in nanoseconds; see timeOf()
    bool hasChangedSince(std::string const& file, std::int64_t time) const;

    /// When a file was changed, in nanoseconds. @return the end of all times if it isn't there
    static std::int64_t timeOf(std::string const& file);

private:
    enum class State { unseen, open, done };

    struct File {
        DatabaseScan scan;
        std::unordered_set<std::string> chosen;
        State state = State::unseen;
        int chain = 0;                      ///< The longest chain of chosen references from here.
        std::uint64_t inclusions = 0;       ///< What a reader of this file opens.
        std::optional<std::int64_t> change; ///< The latest one of this file and all that it needs.
    };

    struct Step {
        File* file;
        std::size_t next = 0; ///< The reference that comes next.
    };

    void collectTextures(std::string const& root, std::unordered_set<std::string>& met,
                         TextureNames& names) const;
    void addTextures(std::string const& file, TextureNames& names) const;
    void visit(std::string const& root);
    void decide(File& file, DatabaseScan::Reference const& reference);

    std::unordered_map<std::string, File> files;
};
