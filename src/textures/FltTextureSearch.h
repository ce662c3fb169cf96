#pragma once

#include "textures/FltKnownDirectories.h"
#include "textures/FltReadableTree.h"
#include "toolkit/VelloReaderExport.h"

#include <string>
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
/// Each directory is read once for the life of the object, whatever names lead to it.
class VELLOREADER_API FltTextureSearch
{
public:
    /// Whether a file that is there will do.
    using Accept = FltKnownDirectories::Accept;

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
    using Parts = FltKnownDirectories::Parts;
    using Way = FltKnownDirectories::Way;

    static Result notFound(std::string const& name, Parts const& parts,
                           std::vector<std::string> const& places);
    std::string findBy(Way way, std::string const& name, Parts const& parts,
                       std::vector<std::string> const& places, Accept const& accept);

    std::vector<std::string> directories;
    FltReadableTree readable;
    FltKnownDirectories known;
};
