#pragma once

#include <string>

/// All that the library can be asked about a database, and all that a host does with what comes of it.
namespace EveryDoor
{

/// What came of it.
struct Passage {
    int scenes = 0;   ///< Loads that gave one.
    int refusals = 0; ///< Loads that were refused with an error of the library's own.
};

/// Loads a database in each mode and by the older entry point; asks each scene for its box and its triangles,
/// sends a ray through it, copies it, writes it as text, binary and VRML, and reads it back; takes the
/// inventory, checks it, and reads the records one by one. An exception that isn't documented goes on.
/// @param number chooses one more combination of the loader's options
/// @param mayThrow whether the older entry point may throw for lack of memory, as it does for a negative
///                 number of mask words
Passage go(std::string const& path, unsigned number, bool mayThrow);

} // namespace EveryDoor
