#pragma once

#include "convert/FltReferenceChain.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoSeparator.h>
#include <cstdint>
#include <map>

/// The files that one top-level conversion has read, on all ways and by all names.
///
/// A file is read again for each file that refers to it, and for each name by which one does, since its scene
/// holds names that depend on the way. That multiplies, so there is an end to it: beyond it the first scene
/// of the file is used.
class FltConvertedFiles
{
public:
    using Identity = FltReferenceChain::Identity;

    /// The finished scene of a file.
    struct Scene {
        SoNodeRef<SoSeparator> root;
        int depth = 0;          ///< Nodes on the longest way below the root.
        std::int64_t nodes = 0; ///< Nodes that a traversal of it meets.
    };

    /// Enters the file that the conversion begins with.
    void begin(Identity const& file, std::int64_t size);

    /// The scene to use in place of reading a file again, or null if the file may be read.
    /// @param names by which the file at hand has referred to it before
    Scene const* findInstead(Identity const& file, std::int64_t size, int names) const;

    /// Enters that an external file is read.
    /// @return whether it is the first time
    bool read(Identity const& file, std::int64_t size);

    /// Enters the scene of a file that was read. Only the first one is kept.
    void finish(Identity const& file, Scene const& scene);

private:
    struct File {
        bool isFinished = false;
        Scene scene;
    };

    std::map<Identity, File> files;
    std::int64_t distinctBytes = 0; ///< Of all files.
    std::int64_t bytesRead = 0;     ///< Of external files, each time that they were read.
};
