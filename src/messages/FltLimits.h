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

/// External files that lead from one to the next.
constexpr int externalReferenceDepth = 32;

/// External files that one top-level conversion opens.
constexpr int externalReferences = 65536;

/// Nodes that a traversal of one scene visits, those of shared subtrees once for each of their places.
constexpr std::int64_t sceneNodes = 50'000'000;

/// Steps spent on one conversion's checks of instance references.
constexpr std::int64_t instanceCheckSteps = 50'000'000;

/// Records and nodes that may be looked at to find the centres of levels of detail. Nested levels count each
/// time.
constexpr std::int64_t lodCentreSteps = 500'000'000;

/// Bytes of text that the comments of one file may become.
constexpr std::size_t commentText = std::size_t(64) << 20;

/// Bytes that the records of a file which are shorter than their layouts may cost, for each byte of the file, and
/// what every file may have in any case. A record costs what it reads after its own end, or the size of its object.
constexpr std::size_t shortRecordBytesPerFileByte = 2;
constexpr std::size_t shortRecordBytes = std::size_t(1) << 20;

/// Messages of one kind that are reported one by one; of further ones the number is.
constexpr int messagesOfAKind = 100;

/// Messages of guards that the console keeps for the life of the process.
constexpr int keptMessages = 10'000;

/// Entries of the material palette: faces name them by a signed 16-bit index.
constexpr int materialPaletteSize = 32768;

/// Vertices in the face sets of obsolete vertices: each face adds a face set, which repeats the vertices of
/// all faces before it.
constexpr std::size_t oldVertexIndices = 16'000'000;

} // namespace FltLimits
