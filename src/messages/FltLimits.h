#pragma once

#include <cstddef>
#include <cstdint>

/// The ceilings that keep a hostile or broken file from exhausting the machine. All are far above what a real
/// database holds. When one is reached, that is reported, and the rest of the file is kept.
namespace FltLimits
{

/// Nodes on the longest way from the root to a leaf of the scene graph. The toolkit traverses and destroys a
/// scene by recursion, so this is a bound on its stack.
constexpr int sceneDepth = 2000;

/// Levels of the hierarchy, external files included: a bound on the conversion's own stack.
constexpr int hierarchyDepth = 1200;

/// Bytes of the stack that have to be left for a file that another one refers to.
constexpr std::size_t stackForAFile = std::size_t(512) << 10;

/// Bytes of the stack that have to be left for a further level in the complete conversion.
constexpr std::size_t stackForALevel = std::size_t(128) << 10;

/// Bytes of the stack that the toolkit takes at most for a node of a scene while it goes through it.
constexpr std::size_t stackForANode = std::size_t(1) << 10;

/// External files that lead from one to the next where the system doesn't say how much of the stack is left.
constexpr int externalReferenceDepth = 32;

/// External files that one top-level conversion opens.
constexpr int externalReferences = 65536;

/// A ceiling that grows with the bytes of the database, so that a small file can't ask for much.
struct Ceiling {
    std::int64_t floor; ///< What every database may have.
    std::int64_t
        perByte; ///< What it may have more for each byte of its own and of the files that it refers to.
};

/// Nodes that a traversal of one scene meets. Those of shared subtrees count once for each place where they
/// stand.
constexpr Ceiling sceneNodes{4'000'000, 50};

/// Copies that the replications of a database make, for every one and for so many bytes more of it and of the
/// files that it refers to.
constexpr std::int64_t copies = 10'000;
constexpr std::int64_t bytesForACopy = 8;

/// Steps spent on one conversion's checks of instance references.
constexpr Ceiling instanceCheckSteps{4'000'000, 10};

/// Records and nodes that may be looked at to find the centres of levels of detail. Nested levels count each
/// time.
constexpr Ceiling lodCentreSteps{20'000'000, 100};

/// Bytes of text that comments may become: every line of one holds the rest of the comment.
constexpr Ceiling commentText{32 << 20, 64};

/// Bytes of the names that the children of switches take from them.
constexpr Ceiling switchNames{4 << 20, 64};

/// Vertices in the face sets of obsolete vertices: each face adds a face set, which repeats the vertices of
/// all faces before it.
constexpr Ceiling oldVertexIndices{4'000'000, 8};

/// Bytes of external files that are read, for each byte of the files that they are: a file is read again for
/// each file that refers to it, and for each name by which one file does.
constexpr std::int64_t externalBytesPerByte = 1000;

/// Names by which one file may refer to another and have it read for each.
constexpr int namesOfAFile = 8;

/// Bytes that those records of a file may cost which are shorter than their layouts: for each byte of the
/// file, and for every file in any case. A record costs what it reads after its own end, or the size of its
/// object, whichever is more.
constexpr std::size_t shortRecordBytesPerFileByte = 2;
constexpr std::size_t shortRecordBytes = std::size_t(1) << 20;

/// Messages of one kind that are reported one by one. Of further ones only the number is reported.
constexpr int messagesOfAKind = 100;

/// Messages of guards that the console keeps for the life of the process.
constexpr int keptMessages = 10'000;

/// Entries of the material palette: faces name them by a signed 16-bit index.
constexpr int materialPaletteSize = 32768;

} // namespace FltLimits
