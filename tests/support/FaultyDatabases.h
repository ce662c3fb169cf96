#pragma once

#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

/// A small database that is well but for one fault: a check finds that and nothing else.
struct FaultyDatabase {
    int number; ///< Of the kind of finding that it provokes, and no other.
    std::function<std::string(ScratchFolder const&)>
        write;                 ///< Writes it with what it needs. @return its path
    std::set<int> others = {}; ///< Kinds that never come without that one.

    /// Writes one like it without the fault, of which nothing is said; may be empty.
    std::function<std::string(ScratchFolder const&)> writeTwin = {};
};

/// One for each kind of finding that a database can provoke.
std::vector<FaultyDatabase> const& faultyDatabases();

/// A database without any fault: a group, an object, a face.
FltWriter faultlessDatabase();
