#pragma once

#include <string>

/// A file that the database, or another external file, refers to.
struct FltReference {
    std::string name;      ///< As the database names it.
    std::string database;  ///< The file that names it.
    std::string path;      ///< Where it was found; empty if it wasn't.
    bool isLoaded = false; ///< Whether its scene is a part of this one.
};
